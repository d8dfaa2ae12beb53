#include "platform/QtDialogs.h"
#include "platform/Resources.h"
#include "support/TestClient.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

QDialog* box()
{
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

// Keys and clicks as the desktop hands them to a window: one that is blocked gets none.
void typeInto(QWidget* window, QWidget* field, const QString& text)
{
    field->setFocus();
    for (const QChar c : text)
        QTest::keyClick(window->windowHandle(), c.toLatin1());
    QTest::keyClick(window->windowHandle(), Qt::Key_Return);
}

} // namespace

// The windows of one program, with real boxes, above and beside each other.
class WindowsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }
    void init()
    {
        m_client.reset();
        const QString address = TestSurroundings::ownAddress(++m_number);
        m_server = std::make_unique<ScriptedServer>(address);
        m_client = std::make_unique<TestClient>(address, &m_events, QString(), &m_boxes);
        m_client->beInTheRoom(*m_server, "@anna bob");
        QTRY_VERIFY(window().isActiveWindow());
    }

    void nickFormBehindAPrompt()
    {
        bool bothUsed = false;
        whileBoxIsOpen([&] {
            say(":s 431 anna :No nickname given");
            QTRY_VERIFY(shown<usenick>());
            QVERIFY(!window().findChild<QWidget*>(u"DataOut"_s)->isEnabled());
            typeInto(shown<usenick>(), shown<usenick>()->findChild<QLineEdit*>(), u"anne"_s);
            QTRY_VERIFY(m_server->received().endsWith("NICK anne\n"));
            QVERIFY(!shown<usenick>() && box());
            typeInto(box(), box()->findChild<QLineEdit*>(), u"loud"_s);
            bothUsed = true;
        });
        kickBob();
        QVERIFY(bothUsed);
        QTRY_VERIFY(m_server->received().endsWith("KICK #Harbor bob :loud\n"));
    }

    void exitBesideAPrompt()
    {
        whileBoxIsOpen([&] {
            say(":s 431 anna :No nickname given");
            QTRY_VERIFY(shown<usenick>());
            QMenu* menu = m_client->around.tray.menu;
            menu->popup({});
            QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, {},
                              menu->actionGeometry(menu->actions().last()).center());
            QTRY_COMPARE(m_client->around.ends, 1);
        });
        kickBob();
        QCOMPARE(m_client->around.ends, 1);
    }

    void focusComesBackToTheInput()
    {
        auto* input = window().findChild<QLineEdit*>(u"DataOut"_s);
        QVERIFY(input->hasFocus());
        m_client->click("mnu_File_changenick");
        QTRY_VERIFY(shown<frmchange>());
        for (QWidget* part :
             {window().findChild<QWidget*>(u"TBar"_s),
              static_cast<QWidget*>(window().menus().bar()), static_cast<QWidget*>(input)})
            QVERIFY(!part->isEnabled());
        shown<frmchange>()->close();
        window().activateWindow();
        QTRY_VERIFY(input->isEnabled() && input->hasFocus());
    }

    void colorGivesTheInputTheFocus()
    {
        say(":bob!u@h PRIVMSG anna :hello");
        QTRY_VERIFY(shown<QueryForm>());
        shown<QueryForm>()->activateWindow();
        QTRY_VERIFY(shown<QueryForm>()->isActiveWindow());
        shown<QueryForm>()->link(QueryForm::Label8).click();
        QTRY_VERIFY(shown<frmcolor>());
        QTest::mouseClick(shown<frmcolor>()->findChild<QWidget*>(u"lblcin4"_s), Qt::LeftButton);
        QTRY_VERIFY(window().isActiveWindow());
        QVERIFY(window().findChild<QWidget*>(u"DataOut"_s)->hasFocus());
    }

    // What is said may be markup that makes the toolkit open files.
    void boxesShowTextsAsTheyStand()
    {
        const QString markup = u"<img src='nowhere'>&b"_s;
        int looks = 0;
        const auto look = [&] {
            ++looks;
            QCOMPARE(guessedTexts(), QStringList());
            QVERIFY(std::ranges::any_of(box()->findChildren<QLabel*>(), [&](const QLabel* label) {
                return label->text() == markup;
            }));
        };
        whileBoxIsOpen(look);
        m_boxes.MsgBox(markup, markup, Dialogs::Icon::Question);
        whileBoxIsOpen(look);
        m_boxes.InputBox(markup, markup);
        QCOMPARE(looks, 2);
    }

private:
    void say(const QByteArray& line) { m_server->say(line + "\r\n"); }
    void kickBob()
    {
        window().lstNicks().setListIndex(1);
        m_client->click("mnu_nicks_kick");
    }

    // In the next box; one that is left open is closed.
    void whileBoxIsOpen(std::function<void()> act)
    {
        QTimer::singleShot(0, this, [act = std::move(act)] {
            act();
            if (box())
                box()->reject();
        });
    }

    Channel& window() { return m_client->window(); }

    int m_number = 0;
    HastyEventLoop m_events;
    QtDialogs m_boxes;
    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<TestClient> m_client;
};

QTEST_MAIN(WindowsTest)
#include "tst_windows.moc"
