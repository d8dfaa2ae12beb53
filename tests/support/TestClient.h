#pragma once

#include "Messenger.h"
#include "controls/ActionEntry.h"
#include "support/ScriptedServer.h"
#include "support/TestSurroundings.h"

#include <QtTest>
#include <QtWidgets>

// What is shown in a way in which the toolkit guesses whether it is markup, which would make it
// open files, or takes an "&" for a key.
inline QStringList guessedTexts()
{
    QStringList guessed;
    for (const QWidget* widget : QApplication::allWidgets()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const bool isOurs = widget->objectName() == QLatin1StringView("Label10") ||     // a link
                            (label && label->buddy() && label->objectName().isEmpty()); // a key
        if (label && !isOurs &&
            ((label->textFormat() != Qt::PlainText && label->pixmap().isNull()) ||
             (label->buddy() && label->text().contains(QLatin1Char('&')))))
            guessed += label->text();
        const QString tip = widget->toolTip();
        if (Qt::mightBeRichText(tip) && !tip.startsWith(QLatin1StringView("<qt>")))
            guessed += tip;
    }
    return guessed;
}

// Says a line, and waits until whatever has come by then has been handled.
inline void tell(ScriptedServer& server, const QString& line)
{
    const qsizetype before = server.received().size();
    server.say(line.toUtf8() + "\r\nPING :after\r\n");
    QTRY_VERIFY(server.received().indexOf("PONG :after\n", before) >= 0);
}

// One whole program in a test, driven by its windows as a user would.
class TestClient final
{
public:
    // With other boxes than the scripted ones, if any.
    explicit TestClient(const QString& address, EventLoop* events = nullptr,
                        const QString& ownAddress = {}, Dialogs* boxes = nullptr)
        : around(address, events, ownAddress, boxes)
        , messenger(around)
    {
    }

    // Through the splash, whose time is over at once.
    void start()
    {
        messenger.start();
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1StringView("frmSplash") && window->isVisible())
                QMetaObject::invokeMethod(window, "finished");
        }
    }

    void enter(const QString& nick, const QString& password = {})
    {
        messenger.login().Show();
        for (const auto& [name, text] : {std::pair("Text1", nick), std::pair("Text2", password)}) {
            field(name)->clear();
            field(name)->setFocus();
            QTest::keyClicks(field(name), text);
        }
    }
    void pressReturnIn(const char* name)
    {
        field(name)->setFocus();
        QTest::keyClick(field(name), Qt::Key_Return);
    }
    void signIn(const QString& nick, const QString& password = {})
    {
        enter(nick, password);
        pressReturnIn("Text1");
    }
    // Signs in, registers and enters. The program is started first, if it was not.
    void beInTheRoom(ScriptedServer& server, const QByteArray& names = "anna @bob")
    {
        const qsizetype before = server.received().size();
        const auto hears = [&](const char* line) {
            return QTest::qWaitFor([&] { return server.received().indexOf(line, before) >= 0; });
        };
        if (!messenger.hasChatRoom())
            start();
        signIn(QStringLiteral("anna"));
        QVERIFY(hears("USER "));
        server.say(":s 001 anna :Welcome\r\n:s 002 anna :Your host is s\r\n");
        QVERIFY(hears("JOIN "));
        server.say(":anna!u@h JOIN :#Harbor\r\n:s 332 anna #Harbor :a topic\r\n"
                   ":s 353 anna = #Harbor :" +
                   names + "\r\n:s 366 anna #Harbor :End\r\n");
        QVERIFY(hears("MODE #Harbor\n"));
        QTRY_VERIFY(chatters().size() > names.count(' '));
    }
    QLineEdit* field(const char* name)
    {
        return messenger.login().findChild<QLineEdit*>(QLatin1StringView(name));
    }
    ActionEntry& signEntry()
    {
        return *messenger.login().findChild<ActionEntry*>(QStringLiteral("mnu_Sign"));
    }
    // What the sign-in form says of the session.
    QString told()
    {
        return messenger.login()
            .findChild<QLabel*>(QStringLiteral("lblSession"))
            ->text()
            .replace(around.address, QStringLiteral("SERVER"));
    }
    // What the input line of the room says when nothing is typed.
    QString inputSays()
    {
        return window().findChild<QLineEdit*>(QStringLiteral("DataOut"))->placeholderText();
    }
    bool looksSignedOut()
    {
        return signEntry().Caption() == QLatin1StringView("Sign In") &&
               field("Text1")->isVisibleTo(&messenger.login());
    }

    ChatRoom& chatRoom() { return messenger.chatRoom(); }
    Channel& window() { return chatRoom().main.window; }
    Connection& connection() { return chatRoom().session.connection; }
    // An entry of the tray's menu or of the main window's.
    void click(const char* entry)
    {
        const QLatin1StringView name(entry);
        QAction* ofTray = around.tray.menu->findChild<QAction*>(name);
        (ofTray ? ofTray : &window().entry(name))->trigger();
    }
    // The entry that connects: caption, and whether it and its counterpart can be clicked.
    QString state()
    {
        const auto flag = [](const MenuEntry& entry) {
            return entry.Enabled() ? QStringLiteral(" on") : QStringLiteral(" off");
        };
        return window().mnu_File_Connect().Caption() + flag(window().mnu_File_Connect()) +
               flag(window().mnu_File_Disconnect());
    }

    QString conversation() { return window().DataIn().Text(); }
    bool reads(const QString& text) { return conversation().contains(text); }
    QString topic() { return window().rtbTopic().Text().trimmed(); }
    QStringList chatters()
    {
        QStringList rows;
        for (int i = 0; i < window().lstNicks().ListCount(); ++i)
            rows += window().lstNicks().List(i);
        return rows;
    }
    void say(const QString& text)
    {
        auto* input = window().findChild<QLineEdit*>(QStringLiteral("DataOut"));
        QTest::keyClicks(input, text);
        QTest::keyClick(input, Qt::Key_Return);
    }

    TestSurroundings around;
    Messenger messenger;
};
