#include "controls/xpButton.h"
#include "platform/Resources.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

// The push button: what it looks like after each thing that happens to it, and what clicks it.
namespace {

QString nameOf(xpButton::Look look)
{
    static const QStringList names{u"empty"_s, u"hover"_s, u"down"_s, u"disabled"_s, u"focus"_s};
    return names[static_cast<int>(look)];
}

} // namespace

class XpButtonTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }
    void init()
    {
        m_window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(m_window.get());
        layout->setContentsMargins(60, 60, 60, 60);
        m_other = new QLineEdit(m_window.get());
        m_button = new xpButton(u"Sign &In"_s, xpButton::Big, m_window.get());
        layout->addWidget(m_other);
        layout->addWidget(m_button);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_other->setFocus();
        QTest::mouseMove(m_window->windowHandle(), {1, 1});
        QTRY_COMPARE(nameOf(m_button->look()), u"empty"_s);
    }
    void cleanup() { m_window.reset(); }

    void looks_data()
    {
        QTest::addColumn<QString>("script"); // event>look, in order

        QTest::newRow("held and dragged out and back")
            << u"enter>hover press>down leave>focus enter>down release>hover"_s;
        QTest::newRow("let go outside")
            << u"enter>hover press>down leave>focus release-outside>focus"_s;
        QTest::newRow("hover with focus") << u"focus>focus enter>hover leave>focus unfocus>empty"_s;
        QTest::newRow("disabled sees no pointer")
            << u"disable>disabled enter>disabled leave>disabled enable>empty"_s;
        QTest::newRow("enabled under the pointer")
            << u"enter>hover disable>disabled enable>hover"_s;
    }

    void looks()
    {
        QFETCH(QString, script);
        for (const QString& step : script.split(u' ')) {
            const QStringList parts = step.split(u'>');
            happen(parts[0]);
            QTRY_COMPARE(QString(step.section(u'>', 0, 0) + u'>' + nameOf(m_button->look())), step);
        }
    }

    void everyLookIsDrawn()
    {
        // All pictures and captions differ, in all sizes: none is missing from the resources.
        QList<QImage> seen;
        const QStringList steps{u"leave unfocus>empty"_s, u"enter>hover"_s, u"press>down"_s,
                                u"leave>focus"_s, u"release-outside unfocus disable>disabled"_s};
        for (const int size : {0, 1, 2}) {
            happen(u"enable"_s);
            m_button->setButtonSize(size);
            for (const QString& step : steps) {
                for (const QString& event : step.section(u'>', 0, 0).split(u' '))
                    happen(event);
                QTRY_COMPARE(nameOf(m_button->look()), step.section(u'>', 1));
                const QImage picture = m_button->grab().toImage();
                QVERIFY2(!seen.contains(picture), qPrintable(QString::number(size) + step));
                seen += picture;
            }
        }
    }

    void clicks_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("clicks");

        QTest::newRow("click") << u"enter press release"_s << 1;
        QTest::newRow("let go outside") << u"press release-outside"_s << 0;
        QTest::newRow("right button") << u"press-right release-right"_s << 0;
        QTest::newRow("disabled") << u"disable press release"_s << 0;
        QTest::newRow("keys do nothing by themselves")
            << u"focus return-key enter-key space-key"_s << 0;
        QTest::newRow("keys in a window that has them")
            << u"keys focus return-key enter-key space-key"_s << 3;
        QTest::newRow("a key that is held")
            << u"keys focus return-key return-held return-held"_s << 1;
        QTest::newRow("keys elsewhere in the window") << u"keys return-key space-key"_s << 0;
        QTest::newRow("keys while disabled") << u"keys focus disable return-key space-key"_s << 0;
    }

    void clicks()
    {
        QFETCH(QString, script);
        const QSignalSpy clicks(m_button, &xpButton::Click);
        for (const QString& event : script.split(u' '))
            happen(event);
        QTEST(static_cast<int>(clicks.count()), "clicks");
    }

    void restsWhileNothingChanges()
    {
        happen(u"enter"_s);
        QTRY_COMPARE(nameOf(m_button->look()), u"hover"_s);
        QCoreApplication::processEvents();
        const QTimer* timer = m_button->findChild<QTimer*>(u"Timer1"_s);
        QVERIFY(timer);
        QTRY_VERIFY(!timer->isActive()); // an idle program sleeps
        for (int i = 0; i < 20; ++i)
            QTest::mouseMove(m_window->windowHandle(),
                             m_button->mapTo(m_window.get(), QPoint(5 + i, 5)));
        QTRY_VERIFY(!timer->isActive());
    }

    void mayEndInItsOwnClick()
    {
        const QPointer<xpButton> button(m_button);
        connect(m_button, &xpButton::Click, this, [this] { delete m_button; });
        happen(u"press"_s);
        happen(u"release"_s);
        QVERIFY(!button);
    }

private:
    // What can happen to the button, as a person would do it.
    void happen(const QString& event)
    {
        QWindow* window = m_window->windowHandle();
        const QPoint inside = m_button->mapTo(m_window.get(), m_button->rect().center());
        const QPoint outside(2, 2);
        const auto key = [this](Qt::Key code) { QTest::keyClick(m_window->focusWidget(), code); };
        const QHash<QString, std::function<void()>> events{
            {u"enter"_s, [&] { QTest::mouseMove(window, inside); }},
            {u"leave"_s, [&] { QTest::mouseMove(window, outside); }},
            {u"press"_s, [&] { QTest::mousePress(window, Qt::LeftButton, {}, inside); }},
            {u"press-right"_s, [&] { QTest::mousePress(window, Qt::RightButton, {}, inside); }},
            {u"release"_s, [&] { QTest::mouseRelease(window, Qt::LeftButton, {}, inside); }},
            {u"release-right"_s, [&] { QTest::mouseRelease(window, Qt::RightButton, {}, inside); }},
            {u"release-outside"_s,
             [&] { QTest::mouseRelease(window, Qt::LeftButton, {}, outside); }},
            {u"focus"_s, [&] { m_button->setFocus(); }},
            {u"unfocus"_s, [&] { m_other->setFocus(); }},
            {u"keys"_s, [&] { new ButtonKeys(m_window.get()); }},
            {u"enable"_s, [&] { m_button->setEnabled(true); }},
            {u"disable"_s, [&] { m_button->setEnabled(false); }},
            {u"return-key"_s, [&] { key(Qt::Key_Return); }},
            {u"enter-key"_s, [&] { key(Qt::Key_Enter); }},
            {u"space-key"_s, [&] { key(Qt::Key_Space); }},
            {u"return-held"_s,
             [&] {
                 QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
                 QApplication::sendEvent(m_window->focusWidget(), &held);
             }},
        };
        QVERIFY2(events.contains(event), qPrintable(event));
        events[event]();
    }

    std::unique_ptr<QWidget> m_window;
    xpButton* m_button = nullptr;
    QLineEdit* m_other = nullptr;
};

QTEST_MAIN(XpButtonTest)
#include "tst_xpbutton.moc"
