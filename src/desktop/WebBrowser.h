#pragma once

#include <QString>

// What the program asks of a tab with a web page.
class WebBrowser
{
public:
    virtual ~WebBrowser() = default;

    virtual void Navigate(const QString& address) = 0;
    virtual void GoBack() = 0;
    virtual void GoForward() = 0;
    virtual void GoHome() = 0;   // the tab's own page
    virtual void GoSearch() = 0; // the search page of the build
    virtual void Refresh() = 0;
    virtual void Stop() = 0;
};
