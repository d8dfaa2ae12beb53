#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class Dialogs;
class MainView;
class MenuEntry;

// Two entries that act like radio buttons, "Yes" being on at every start. A click always ends
// with its own entry checked and the partner not, but in between the clicked one is inverted and
// may be off while a box is up. What the toolkit checks by itself on a click does not count.
class OptionPair final
{
public:
    OptionPair(MenuEntry& yes, MenuEntry& no);

    void clickYes() { click(m_yes, m_no); }
    // The step runs once the partner has been unchecked; its failure is passed over.
    void clickNo(const std::function<void()>& step = {}) { click(m_no, m_yes, step); }

private:
    struct Side
    {
        MenuEntry& entry;
        bool checked;

        void set(bool on);
    };

    static void click(Side& own, Side& partner, const std::function<void()>& step = {});

    Side m_yes;
    Side m_no;
};

// Private talk and sounds, each on or off, and the entry that clears the screen.
class ChatOptions final
{
public:
    struct Parts
    {
        // The names cross over the captions: ..._no is "Yes".
        MenuEntry& mnu_pm_no;
        MenuEntry& mnu_pm_yes;
        MenuEntry& mnu_sound_no;
        MenuEntry& mnu_sound_yes;
        const MainView& mainView;
        Dialogs& dialogs;
    };

    explicit ChatOptions(const Parts& parts);

    static QStringList entries();
    // Other names do nothing.
    void click(const QString& entry);

private:
    void closequery();
    void mnu_options_clear_Click();

    Parts m_parts;
    OptionPair m_privateChat;
    OptionPair m_sound;
};
