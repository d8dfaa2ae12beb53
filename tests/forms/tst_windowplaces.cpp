#include "controls/ListBoxWidget.h"
#include "desktop/Channel.h"
#include "desktop/PrivatePlace.h"
#include "desktop/WindowPlaces.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "platform/ScreenFit.h"
#include "support/TestSurroundings.h"
#include "talk/QueryForm.h"
#include "text/frmSmileys.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

// Where windows come up, and what is kept of that.
class WindowPlacesTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }
    void fits_data()
    {
        QTest::addColumn<QRect>("frame");
        QTest::addColumn<QRect>("expected"); // on a screen of 800 by 600

        QTest::newRow("inside") << QRect(10, 20, 300, 200) << QRect(10, 20, 300, 200);
        QTest::newRow("too large") << QRect(-50, -60, 960, 640) << QRect(0, 0, 800, 600);
        QTest::newRow("beyond the edges") << QRect(700, 580, 300, 200) << QRect(500, 400, 300, 200);
        QTest::newRow("another screen") << QRect(-2000, -90, 300, 200) << QRect(0, 0, 300, 200);
    }

    void fits()
    {
        QFETCH(QRect, frame);
        QTEST(fitted(frame, QRect(0, 0, 800, 600)), "expected");
    }

    void privateWindows_data()
    {
        QTest::addColumn<QRect>("room");
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<QString>("side");

        QTest::newRow("room on both sides")
            << QRect(480, 100, 960, 640) << QSize(1920, 1080) << u"right"_s;
        QTest::newRow("room at the right")
            << QRect(950, 60, 960, 640) << QSize(1920, 1080) << u"left"_s;
        QTest::newRow("800 by 600") << QRect(8, 20, 780, 560) << QSize(800, 600) << u"over"_s;
        QTest::newRow("no room in sight") << QRect() << QSize(1280, 900) << u"anywhere"_s;
    }

    void privateWindows()
    {
        QFETCH(QRect, room);
        QFETCH(QSize, screen);
        QFETCH(QString, side);
        const QRect whole(QPoint(), screen);
        const QRect input(room.left(), room.bottom() - 50, room.width(), 51);
        QList<QPoint> taken;
        for (int i = 0; i < 4; ++i) {
            const QRect frame = PrivatePlace{.wanted = {624, 512},
                                             .smallest = {360, 330},
                                             .room = room,
                                             .inputTop = input.top(),
                                             .screen = whole,
                                             .taken = taken}
                                    .find();
            QVERIFY(whole.contains(frame));
            QVERIFY(!frame.intersects(input));
            QVERIFY(!taken.contains(frame.topLeft()));
            QCOMPARE(frame.left() > room.right(), side == "right"_L1 || room.isEmpty());
            QCOMPARE(frame.right() < room.left(), side == "left"_L1);
            if (i == 0 && room.isEmpty())
                QVERIFY((frame.center() - whole.center()).manhattanLength() < 60); // its steps
            taken += frame.topLeft();
        }
    }

    void aSessionOfWindows()
    {
        const QString file = m_around.folder.filePath(u"state/windows.ini"_s);
        QSize sizeLeft;
        for (int session = 0; session < 2; ++session) {
            QObject application;
            auto* places = new WindowPlaces(&application, file);
            qApp->installEventFilter(places);
            Channel room(m_handlers, m_around.dialogs, nullptr);
            room.Show();
            QVERIFY(QTest::qWaitForWindowActive(&room));
            QVERIFY(screen().contains(room.frameGeometry()));
            if (session == 0)
                room.resize(room.minimumSize());
            else
                QCOMPARE(room.size(), sizeLeft);
            sizeLeft = room.size();

            frmSmileys palette(m_handlers);
            palette.Show();
            const auto* button = room.findChild<QWidget*>(u"check1"_s);
            QVERIFY(screen().contains(palette.geometry()));
            QVERIFY(palette.geometry().bottom() <= button->mapToGlobal(QPoint()).y());

            QueryForm talk;
            talk.show();
            QVERIFY(screen().contains(talk.geometry()));
            const auto* input = room.findChild<QWidget*>(u"DataOut"_s);
            QVERIFY(
                !talk.geometry().intersects(QRect(input->mapToGlobal(QPoint()), input->size())));
            places->rememberOpenOnes();
        }
    }

    void offScreenIsBroughtBack()
    {
        const QString file = m_around.folder.filePath(u"windows.ini"_s);
        QFile lost(file);
        QVERIFY(lost.open(QIODevice::WriteOnly));
        lost.write("[Channel]\nplace=@Point(9000 -7000)\nsize=@Size(5000 4000)\nmaximized=maybe\n");
        lost.close();
        QObject application;
        qApp->installEventFilter(new WindowPlaces(&application, file));
        Channel room(m_handlers, m_around.dialogs, nullptr);
        room.Show();
        QVERIFY(screen().contains(room.frameGeometry()));
    }

private:
    static QRect screen() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    TestSurroundings m_around{u"127.0.0.1"_s};
    const Handlers m_handlers{[](const QString& text) { QFAIL(qPrintable(text)); }};
};

QTEST_MAIN(WindowPlacesTest)
#include "tst_windowplaces.moc"
