#include "controls/xpButton.h"
#include "desktop/Modules.h"
#include "desktop/WebAddresses.h"
#include "desktop/WebModule.h"
#include "desktop/WebTab.h"
#include "desktop/WebToolBar.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "support/FakeEngine.h"

#include <QtNetwork>
#include <QtTest>
#include <QtWidgets>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// Answers each path with its page and keeps the paths that were asked for.
class PageServer final : public QTcpServer
{
public:
    PageServer()
    {
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(socket); });
        });
    }

    QString address(const QString& path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path);
    }

    QHash<QString, QByteArray> pages;
    QByteArray disposition; // of what is not a page
    QStringList asked;

private:
    void answer(QTcpSocket* socket)
    {
        if (!socket->canReadLine())
            return;
        const QString path = QString::fromLatin1(socket->readAll()).section(u' ', 1, 1);
        asked += path;
        const bool download = path == "/download"_L1;
        const QByteArray body = pages.value(path, "<p>nothing");
        socket->write("HTTP/1.1 200 OK\r\nConnection: close\r\nCache-Control: no-store\r\n" +
                      QByteArray(download ? "Content-Type: application/octet-stream\r\n"
                                            "Content-Disposition: attachment; filename=x.bin\r\n"
                                          : "Content-Type: text/html\r\n") +
                      "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        socket->disconnectFromHost();
    }
};

} // namespace

#define NEED_ENGINE()                                                                              \
    if (!m_module.engine().engine)                                                                 \
    QSKIP("no web engine here")

// A tab with a web page: what it asks of the engine, what it says without one, and the engine.
class tst_webtab final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        loadResources();
        qputenv("HOME", m_home.path().toLocal8Bit()); // where downloads would go
        if (geteuid() == 0)
            qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
        m_modules = Modules({QCoreApplication::applicationDirPath() + "/../src/modules"_L1});
    }
    void init()
    {
        m_asked = 0;
        m_engine.calls.clear();
    }

    void engineComesWhenThePageIsSeen()
    {
        WebTab tab(m_handlers, fake(), pages());
        tab.show();
        tab.Refresh();
        tab.GoBack();
        tab.Stop();
        QVERIFY(noticeStands(tab));
        tab.hide();

        tab.Navigate(u"http://own/home"_s);
        tab.Navigate(u"http://own/other"_s);
        QCoreApplication::processEvents();
        QCOMPARE(m_asked, 0);
        tab.show();
        QCOMPARE(title(tab), u"Loading"_s); // before anything of the engine has been touched
        QCOMPARE(m_asked, 0);
        QTRY_COMPARE(m_engine.calls, QStringList{u"load http://own/other"_s});
        QVERIFY(!noticeStands(tab));
        QVERIFY(tab.findChild<QWidget*>(u"page"_s)->isVisible());

        tab.hide(); // a page that has been seen goes on unseen
        tab.Navigate(u"http://own/third"_s);
        QCOMPARE(m_engine.calls.last(), u"load http://own/third"_s);
        QCOMPARE(m_asked, 1);
    }

    void commandsToAPageThatWaits()
    {
        WebTab tab(m_handlers, fake(), pages());
        tab.Navigate(u"http://own/first"_s);
        tab.Stop();
        tab.show();
        QCoreApplication::processEvents();
        QCOMPARE(m_asked, 0);
        QVERIFY(tab.findChild<QLabel*>(u"lblNotice"_s)->text().contains(u"http://own/first"_s));
        QVERIFY(tab.findChild<xpButton*>(u"cmdRetry"_s)->isVisible());

        tab.hide();
        tab.Refresh();
        tab.GoHome();
        tab.Refresh();
        QCoreApplication::processEvents();
        QCOMPARE(m_asked, 0);
        QCOMPARE(title(tab), u"Loading"_s);
        tab.show();
        QTRY_COMPARE(m_engine.calls, QStringList{u"load http://own/home"_s});
    }

    void onlyWebAddresses()
    {
        WebTab tab(m_handlers, fake(), pages());
        tab.show();
        for (const char* address : {"file:///etc/passwd", "javascript:alert(1)", "data:text/html,x",
                                    "chrome://gpu", "ftp://own/", "/relative", ""}) {
            tab.Navigate(QString::fromLatin1(address));
            QCoreApplication::processEvents();
            QVERIFY2(m_asked == 0 && title(tab) != u"Loading"_s, address);
        }
    }

    void buttonsCommand()
    {
        WebTab tab(m_handlers, fake(), pages());
        WebToolBar bar(m_handlers, tab);
        bar.show();
        tab.show();
        tab.Navigate(u"http://own/first"_s);
        QTRY_COMPARE(m_engine.calls.size(), 1);

        const auto buttons = bar.findChildren<QToolButton*>();
        for (QToolButton* button : buttons) {
            m_engine.calls += button->text() + u':';
            QVERIFY(button->objectName() == button->text() && !button->icon().isNull());
            QTest::mouseClick(button, Qt::LeftButton);
        }
        QCOMPARE(m_engine.calls.join(u' '),
                 u"load http://own/first Back: back Forward: forward Stop: stop Refresh: reload "
                 "Home: load http://own/home Search: load https://find/"_s);

        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
            QTest::keyClick(buttons.first(), key);
            QCOMPARE(m_engine.calls.last(), u"back"_s);
            m_engine.calls += u"-"_s;
        }
    }

    void failureAndRetry()
    {
        WebTab tab(m_handlers, fake(), pages());
        tab.show();
        tab.Navigate(u"http://own/first"_s);
        QTRY_VERIFY(!noticeStands(tab));
        m_engine.view->listener.failed(QUrl(u"http://own/<b>second"_s), u"connection refused"_s);
        QVERIFY(noticeStands(tab));
        QCOMPARE(title(tab), u"This page did not load"_s);
        const auto* text = tab.findChild<QLabel*>(u"lblNotice"_s);
        QVERIFY(text->text().contains(u"connection refused"_s));
        QCOMPARE(text->textFormat(), Qt::PlainText);

        QTest::mouseClick(tab.findChild<xpButton*>(u"cmdRetry"_s), Qt::LeftButton);
        QCOMPARE(m_engine.calls.last(),
                 QString("load "_L1 + QUrl(u"http://own/<b>second"_s).toString()));
        QVERIFY(!noticeStands(tab));
        tab.Refresh(); // of a page that is there again
        QCOMPARE(m_engine.calls.last(), u"reload"_s);
    }

    void withoutEngine()
    {
        WebTab tab(
            m_handlers,
            [this] {
                ++m_asked;
                return WebModule::Answer{nullptr, u"Not in this build."_s};
            },
            pages());
        tab.show();
        tab.Navigate(u"http://own/first"_s);
        QTRY_COMPARE(m_asked, 1);
        tab.Navigate(u"http://own/second"_s);
        tab.GoBack();
        tab.Refresh();
        QCOMPARE(m_asked, 1);
        QVERIFY(noticeStands(tab));
        QCOMPARE(title(tab), u"No web page today"_s);
        QCOMPARE(tab.findChild<QLabel*>(u"lblNotice"_s)->text(), u"Not in this build."_s);
        QVERIFY(!tab.findChild<xpButton*>(u"cmdRetry"_s)->isVisible());
    }

    void realPage()
    {
        NEED_ENGINE();
        PageServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        // Everything a page may try is tried, and the last thing is what it may do.
        server.pages[u"/first"_s] =
            "<title>first</title><script>"
            "alert('in the way');"
            "try { location.href = 'file:///etc/passwd' } catch (e) {}"
            "setTimeout(() => { location.href = '/download'; }, 50);"
            "setTimeout(() => { location.href = 'mailto:nobody@example.net'; }, 150);"
            "setTimeout(() => { document.querySelector('a').click(); }, 300);"
            "</script><a target='_blank' href='/second'>on</a>";
        server.pages[u"/download"_s] = QByteArray(100, 'x');
        // A page that has been asked for is not yet the one that "back" starts from.
        server.pages[u"/own"_s] = "<script>onload = () => fetch('/owned')</script>";
        server.pages[u"/search"_s] = "<script>onload = () => fetch('/searched')</script>";

        WebTab tab(m_handlers, [this] { return m_module.engine(); },
                   {server.address(u"/own"_s), server.address(u"/search"_s)});
        tab.show();
        tab.Navigate(server.address(u"/first"_s));
        QTRY_VERIFY_WITH_TIMEOUT(server.asked.contains(u"/second"_s), 20000); // in the same view
        QVERIFY(server.asked.contains(u"/download"_s));
        QVERIFY(!noticeStands(tab));
        QVERIFY2(QDir(m_home.path()).entryList(QDir::Files).isEmpty(), "something was downloaded");
        QVERIFY(!QDir(m_home.filePath(u"Downloads"_s)).exists(u"x.bin"_s));

        tab.GoHome();
        QTRY_VERIFY(server.asked.contains(u"/owned"_s));
        tab.GoSearch();
        QTRY_VERIFY(server.asked.contains(u"/searched"_s));
        const auto owns = server.asked.count(u"/own"_s);
        tab.GoBack();
        QTRY_COMPARE(server.asked.count(u"/own"_s), owns + 1);
    }

    void realPageThatDoesNotLoad()
    {
        NEED_ENGINE();
        PageServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const quint16 port = server.serverPort();
        const QString address = server.address(u"/own"_s);
        server.close();

        WebTab tab(m_handlers, [this] { return m_module.engine(); }, {address, address});
        tab.show();
        tab.GoHome();
        QTRY_VERIFY_WITH_TIMEOUT(noticeStands(tab) && title(tab) == u"This page did not load"_s,
                                 20000);
        QCOMPARE(tab.findChild<QLabel*>(u"lblNotice"_s)->text(),
                 QString("The server does not answer.\n"_L1 + address));

        QVERIFY(server.listen(QHostAddress::LocalHost, port));
        tab.findChild<xpButton*>(u"cmdRetry"_s)->click();
        QTRY_VERIFY(server.asked.contains(u"/own"_s));
        QTRY_VERIFY(!noticeStands(tab));
    }

    void realHiddenPageSleeps()
    {
        NEED_ENGINE();
        PageServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        // While it is awake the page keeps asking.
        server.pages[u"/page"_s] = "<script>setInterval(() => fetch('/tick'), 20)</script>awake";

        WebTab tab(
            m_handlers, [this] { return m_module.engine(); }, {}, std::chrono::milliseconds(50));
        tab.Navigate(server.address(u"/page"_s));
        tab.show();
        QTRY_COMPARE_WITH_TIMEOUT(server.asked.count(u"/page"_s), 1, 20000);
        QTRY_VERIFY(server.asked.count(u"/tick"_s) > 3);
        tab.hide();
        const auto settled = [&] { // nothing for as long as ten ticks take
            const auto before = server.asked.size();
            QTest::qWait(200);
            return server.asked.size() == before;
        };
        QTRY_VERIFY(settled());

        // What it was has been given up: it comes again from the server.
        const auto loads = server.asked.count(u"/page"_s);
        const auto ticks = server.asked.count(u"/tick"_s);
        tab.show();
        QTRY_VERIFY(server.asked.count(u"/page"_s) > loads);
        QTRY_VERIFY(server.asked.count(u"/tick"_s) > ticks);

        // An address that arrives while it sleeps is loaded all the same.
        tab.hide();
        QTRY_VERIFY(settled());
        tab.Navigate(server.address(u"/next"_s));
        QTRY_VERIFY(server.asked.contains(u"/next"_s));
    }

private:
    WebTab::Pages pages() const { return {u"http://own/home"_s, u"https://find/"_s}; }
    WebTab::AskEngine fake()
    {
        return [this] {
            ++m_asked;
            return WebModule::Answer{&m_engine, {}};
        };
    }
    static QString title(const WebTab& tab)
    {
        return tab.findChild<QLabel*>(u"lblNoticeTitle"_s)->text();
    }
    static bool noticeStands(const WebTab& tab)
    {
        return tab.findChild<QLabel*>(u"lblNoticeTitle"_s)->isVisible();
    }

    const Handlers m_handlers{[](const QString& message) { QFAIL(qPrintable(message)); }};
    QTemporaryDir m_home;
    FakeEngine m_engine;
    int m_asked = 0;
    Modules m_modules{{QString()}};
    WebModule m_module{m_modules};
};

QTEST_MAIN(tst_webtab)
#include "tst_webtab.moc"
