#include "desktop/PopupSlide.h"

#include <QTest>

// The way of the popup, tick by tick, on screens of several sizes.
class tst_popupgeometry final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAtTheLowerRight();
    void risesRestsAndSinks_data();
    void risesRestsAndSinks();
};

void tst_popupgeometry::startsAtTheLowerRight()
{
    const PopupSlide slide(19200, 15360, 4800);
    QCOMPARE(slide.Left(), 14200);
    QCOMPARE(slide.Top(), 14910);
    QCOMPARE(slide.Height(), 0);
    QCOMPARE(slide.Interval(), 1);
    QVERIFY(slide.SlidingIn());
}

void tst_popupgeometry::risesRestsAndSinks_data()
{
    QTest::addColumn<int>("screenHeight");
    QTest::newRow("a usual screen") << 16200;
    QTest::newRow("lower than the popup") << 1000;
    QTest::newRow("no whole number of steps") << 11521;
}

void tst_popupgeometry::risesRestsAndSinks()
{
    QFETCH(int, screenHeight);
    using Outcome = PopupSlide::Outcome;
    PopupSlide slide(28800, screenHeight, 4800);

    for (int step = 1; step <= 31; ++step) {
        QCOMPARE(slide.Timer1_Timer(), Outcome::GoesOn);
        QCOMPARE(slide.Height(), 55 * step);
        QCOMPARE(slide.Top() + slide.Height(), screenHeight - 450);
        QCOMPARE(slide.Interval(), 11);
        QVERIFY(slide.SlidingIn());
    }

    QCOMPARE(slide.Timer1_Timer(), Outcome::GoesOn);
    QVERIFY(!slide.SlidingIn());
    QCOMPARE(slide.Interval(), 4000);
    QCOMPARE(slide.Height(), 1740);
    QCOMPARE(slide.Top(), screenHeight - 2190);

    for (int step = 1; step <= 31; ++step) {
        QCOMPARE(slide.Timer1_Timer(), Outcome::GoesOn);
        QCOMPARE(slide.Height(), 1740 - 55 * step);
        QCOMPARE(slide.Top(), screenHeight - 2190 + 55 * step);
        QCOMPARE(slide.Interval(), 11);
    }

    // 35 twips are left: the next step would go below zero and is refused, but it still sinks.
    QCOMPARE(slide.Timer1_Timer(), Outcome::Broken);
    QCOMPARE(slide.Height(), 35);
    QCOMPARE(slide.Top(), screenHeight - 430);
}

QTEST_APPLESS_MAIN(tst_popupgeometry)
#include "tst_popupgeometry.moc"
