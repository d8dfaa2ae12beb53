#pragma once

#include <QString>

class MainView;

// Writes notes of the program itself to the main view. Nothing is reported when that fails.
class StatusLine final
{
public:
    explicit StatusLine(const MainView& mainView)
        : m_mainView(mainView)
    {
    }

    void WriteStatus(const QString& text, int color) const;

private:
    const MainView& m_mainView;
};
