#pragma once

#include "desktop/WebTab.h"
#include "session/Ports.h"

class Channel;
class Handlers;

// What stands in the tabs "Home" and "Misc": a web page with its row of buttons in each.
class SitePages final : public WebPages
{
public:
    // The window takes the pages.
    SitePages(const Handlers& handlers, const WebTab::AskEngine& askEngine, Channel& window);

    void navigateHome(const QString& path) override;
    void navigateMisc(const QString& path) override;

private:
    WebTab* m_home;
    WebTab* m_misc;
};
