#include "desktop/PopupSlide.h"

#include <QtTest>

class tst_popupgeometry final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void risesRestsAndSinks()
    {
        constexpr int screenHeight = 11521; // no whole number of steps
        using Outcome = PopupSlide::Outcome;
        PopupSlide slide(19200, screenHeight, 4800);
        const auto at = [&](int height, int top, int interval) {
            return slide.Height() == height && slide.Top() == top && slide.Interval() == interval;
        };
        QCOMPARE(slide.Left(), 14200);
        QVERIFY(at(0, screenHeight - 450, 1));
        for (int step = 1; step <= 31; ++step) {
            QVERIFY(slide.SlidingIn());
            QCOMPARE(slide.Timer1_Timer(), Outcome::GoesOn);
            QVERIFY(at(55 * step, screenHeight - 450 - 55 * step, 11));
        }
        QVERIFY(slide.SlidingIn());
        QCOMPARE(slide.Timer1_Timer(), Outcome::GoesOn);
        QVERIFY(!slide.SlidingIn() && at(1740, screenHeight - 2190, 4000));
        for (int step = 1; step <= 31; ++step) {
            QCOMPARE(slide.Timer1_Timer(), Outcome::GoesOn);
            QVERIFY(at(1740 - 55 * step, screenHeight - 2190 + 55 * step, 11));
        }
        // 35 twips are left: the next step would go below zero and is refused, but it still sinks.
        QCOMPARE(slide.Timer1_Timer(), Outcome::Broken);
        QVERIFY(at(35, screenHeight - 430, 11));
    }
};

QTEST_APPLESS_MAIN(tst_popupgeometry)
#include "tst_popupgeometry.moc"
