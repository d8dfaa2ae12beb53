#pragma once

#include "commands/InputLine.h"
#include "controls/ListBoxWidget.h"
#include "desktop/MenuTree.h"
#include "session/Ports.h"
#include "text/CheckRTF.h"
#include "text/Palettes.h"
#include "view/ChatView.h"
#include "view/RichTextBoxWidget.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTabBar>
#include <QToolButton>
#include <QWidget>

class Dialogs;
class Handlers;
class InputKeys;
class LineLock;
class QStackedWidget;
class SvgPicture;

// The main window: menus, the tabs with the two web pages and the chat page. It owns controls and
// hands their events on; closing it only hides it.
class Channel final : public QWidget, public MainForm, public InputBox, public PaletteTarget
{
    Q_OBJECT
public:
    // What the window asks about keys: each gives what the box is to take, 0 for nothing.
    struct KeyHooks
    {
        std::function<int(int keyCode)> topicKeyDown;
        std::function<int(int character)> topicKeyPress;
        std::function<int(int keyCode)> inputKeyDown;
        std::function<int(int character)> inputKeyPress;
    };

    Channel(const Handlers& handlers, Dialogs& dialogs, std::shared_ptr<ViewLook> look = nullptr);
    ~Channel() override;
    Q_DISABLE_COPY_MOVE(Channel)

    void setKeyHooks(KeyHooks hooks) { m_hooks = std::move(hooks); }
    const MenuTree& menus() const { return *m_menus; }
    LineLock& lock() const { return *m_lock; }
    ActionEntry& entry(const QString& name) const { return m_menus->entry(name); }
    // The pages of the tabs "Home" and "Misc"; the window takes them.
    void setWebPages(QWidget* home, QWidget* misc);

    void myHome();
    void myMisc();
    void myChatRoom();

    QColor inputColor() const;
    // While held nothing in the window can be used; what stands above it can.
    void setHeld(bool held);
    // What the input line says of itself: whether anybody hears.
    void setConnected(bool connected);

    // MainForm
    RichTextBox& DataIn() override { return *m_dataIn; }
    RichTextBox& rtbTopic() override { return *m_topic; }
    ListBox& lstNicks() override { return *m_nicks; }
    ListBoxWidget& nickRows() const { return *m_nicks; }
    void setCmdCount(const QString& caption) override { cmdCount->setText(caption); }
    void setVisible(bool visible) override { QWidget::setVisible(visible); }
    MenuEntry& mnu_File_Connect() override;
    MenuEntry& mnu_File_Disconnect() override;
    QString portText() const override { return Text1->text(); }
    void setPortText(const QString& port) override { Text1->setText(port); }
    QString computerName() const override { return Label7->text(); }
    void setComputerName(const QString& name) override;
    void Show() override;
    void Hide() override { hide(); }

    // InputBox
    QString text() const override { return DataOut->text(); }
    void setText(const QString& text) override { DataOut->setText(text); }
    void setTypeface(const QString& family, int points) override;

    // PaletteTarget
    void appendToInput(const QString& text) override;
    void setInputColor(const QColor& color) override; // of DataOut and of the palette's button
    void focusInput() override;

Q_SIGNALS:
    void Check3_Click(bool bold);
    void Check4_Click(bool underline);
    void check1_Click();
    void check2_Click();
    void Command3_Click();
    void command1_Click();
    void Label1_Click();
    void authorLinkClicked(); // Label4 and Label5 both
    void lstNicks_DblClick();
    void lstNicks_RightButtonDown(const QPoint& globalPosition);
    // The question was answered: the window is hidden.
    void closedToTray();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildChatPage();
    QWidget* buildTopicRow();
    QWidget* buildToolRow();
    QWidget* buildInputRow();
    void connectEvents(const Handlers& handlers);
    void showPage(int index);
    int pressInput(int character) const;
    bool topicTakes(const QKeyEvent& event) const;
    bool inputTakes(const QKeyEvent& event) const;

    const Handlers& m_handlers;
    Dialogs& m_dialogs;
    KeyHooks m_hooks;
    MenuTree* m_menus;
    QTabBar* TBar;
    LineLock* m_lock;
    QStackedWidget* m_pages;

    RichTextBoxWidget* m_topic = nullptr;
    ChatView* m_dataIn;
    SmileyPass m_smileys;
    ListBoxWidget* m_nicks = nullptr;
    QLabel* cmdCount = nullptr;
    QLineEdit* DataOut = nullptr;
    std::unique_ptr<InputKeys> m_inputKeys;
    QPointer<QWidget> m_focusBeforeHold;
    SvgPicture* Image2 = nullptr;
    QCheckBox* Check3 = nullptr;
    QCheckBox* Check4 = nullptr;
    QToolButton* check1 = nullptr;
    QToolButton* check2 = nullptr;
    QToolButton* Command3 = nullptr;
    QToolButton* command1 = nullptr;
    QToolButton* Label1 = nullptr;
    QToolButton* Label4 = nullptr;
    QToolButton* Label5 = nullptr;
    QLabel* Label7 = nullptr;   // hidden: the computer's name
    QLineEdit* Text1 = nullptr; // hidden: the port
};
