#include "platform/CaretRest.h"
#include "platform/FramePace.h"

#include <QtTest>
#include <QtWidgets>

class FramePaceTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void manySmallChanges();
    void caretRests();
};

namespace {

class PaintedLabel final : public QLabel
{
public:
    QStringList painted;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        painted += text();
        QLabel::paintEvent(event);
    }
};

} // namespace

// Not each of them is painted, but the last one is.
void FramePaceTest::manySmallChanges()
{
    QWidget window;
    auto* label = new PaintedLabel;
    (new QVBoxLayout(&window))->addWidget(label);
    auto* pace = new FramePace(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    label->painted.clear();
    constexpr int changes = 500;
    for (int i = 1; i <= changes; ++i) {
        label->setText(QString::number(i));
        QCoreApplication::sendPostedEvents();
    }
    const auto paintedMeanwhile = label->painted.size();
    QTRY_COMPARE(label->painted.value(label->painted.size() - 1), QString::number(changes));
    QVERIFY2(paintedMeanwhile < changes / 2, qPrintable(QString::number(paintedMeanwhile)));
    QTRY_VERIFY(QAbstractEventDispatcher::instance()->registeredTimers(pace).isEmpty()); // at rest
}

// It blinks while somebody is there.
void FramePaceTest::caretRests()
{
    QApplication::setCursorFlashTime(700);
    QObject application;
    auto* rest = new CaretRest(&application);
    rest->findChild<QTimer*>()->start(0);
    QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
    QEvent hover(QEvent::HoverMove);
    QCoreApplication::sendEvent(&application, &hover);
    QCOMPARE(QApplication::cursorFlashTime(), 0);
    for (const auto type : {QEvent::KeyPress, QEvent::MouseButtonPress, QEvent::WindowActivate}) {
        QEvent event(type);
        QCoreApplication::sendEvent(&application, &event);
        QCOMPARE(QApplication::cursorFlashTime(), 700);
    }
}

QTEST_MAIN(FramePaceTest)
#include "tst_framepace.moc"
