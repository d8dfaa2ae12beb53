#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "text/SmileyTable.h"
#include "text/frmSmileys.h"
#include "text/frmcolor.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QWidget& control(const QWidget& form, const QString& name)
{
    return *form.findChild<QWidget*>(name);
}

void open(Form& form)
{
    form.Show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
}

// What the table must hold, written down a second time.
const QStringList codes =
    QString::fromLatin1(
        R"~(:)) :(( ;) :D ;;) :-/ :X :"> :P :* :O X-( :> B-) :-S >:) ps2 :| /:-) :-B O:-) =; I-)
8-| :-& :-$ [-( :o) 8-} (:| =p~ :-? #-o =D> :@) 3:-O :(|) ~:> @};- %%- (~~) ~o) -:)
8-x >-) :-L <):) [-o< @-) $-) :-" :^o B-( :)>- [-x \:D/ >:D< o-> o=> o-+ (%) (beer)
=)) L-) :-SS <:-P >:/ ;)) :-w :-< >:P (*) #:-S :V) =(( :-@ :-j ^:)^ (c) (b) brb :)
:( (?) (K))~")
        .simplified()
        .split(u' ');
const QList<int> unusedIndexes{17, 41, 63, 84, 85};

constexpr std::pair<const char*, QRgb> ownColors[]{
    {"Black", 0x000000},      {"Dark Blue", 0x000063},     {"Green", 0x006300},
    {"Red", 0xff0000},        {"Brown", 0x630000},         {"Dark Pink", 0x630063},
    {"Orange", 0xffa000},     {"Yellow", 0xffff00},        {"Light Green", 0x00ff3c},
    {"Dark Green", 0x006363}, {"Light Blue", 0x00ffff},    {"Dark Blue", 0x0000ff},
    {"Light Pink", 0xe600ff}, {"Black n White", 0x636363}, {"White-Black Mix", 0xa5a5a5},
};

} // namespace

class tst_palettes : public QObject
{
    Q_OBJECT

    Handlers m_handlers{[](const QString& message) { QFAIL(qPrintable(message)); }};

private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void everySmileyIsShownAndPicked()
    {
        frmSmileys form(m_handlers);
        open(form);
        QSignalSpy picked(&form, &frmSmileys::picked);
        QWidget* const focused = form.focusWidget();
        QCOMPARE(codes.size(), qsizetype(smileys::table.size()));
        int index = -1;
        for (qsizetype row = 0; row < codes.size(); ++row) {
            const QString code = codes[row];
            do {
                ++index;
            } while (unusedIndexes.contains(index));
            // The order is that of the search.
            QCOMPARE(QString(smileys::table[std::size_t(row)].code), code);
            QWidget& item = control(form, u"imgicon%1"_s.arg(index));
            QCOMPARE(item.toolTip(), index == 83 ? QString() : code);
            QCOMPARE(item.accessibleName(), u"smiley "_s + code);
            QTest::mouseClick(&item, Qt::LeftButton);
            QCOMPARE(picked.takeFirst().at(0).toString(), code);
        }
        QWidget& extra = control(form, u"Image47"_s);
        QCOMPARE(extra.toolTip(), u"=:)"_s);
        QTest::mouseClick(&extra, Qt::LeftButton);
        QVERIFY(picked.isEmpty());
        QCOMPARE(form.focusWidget(), focused);
        QVERIFY(form.isVisible());
    }

    void smileysByKeyboard()
    {
        frmSmileys form(m_handlers);
        open(form);
        QSignalSpy picked(&form, &frmSmileys::picked);
        const auto press = [&](std::initializer_list<Qt::Key> keys) {
            for (const Qt::Key key : keys)
                QTest::keyClick(form.focusWidget(), key);
            return form.focusWidget()->objectName();
        };
        QCOMPARE(form.focusWidget()->objectName(), u"imgicon0"_s);
        QCOMPARE(press({Qt::Key_Left, Qt::Key_Up, Qt::Key_Right}), u"imgicon1"_s);
        QCOMPARE(press({Qt::Key_Down}), u"imgicon14"_s);
        QCOMPARE(press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Up}), u"imgicon3"_s); // wide one
        QCOMPARE(press({Qt::Key_End}), u"imgicon89"_s);
        QCOMPARE(press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Return}), u"imgicon89"_s);
        QCOMPARE(press({Qt::Key_Home, Qt::Key_Space}), u"imgicon0"_s);
        QCOMPARE(picked.size(), 2);
        QCOMPARE(picked[0][0].toString(), u"(K)"_s);
        QCOMPARE(picked[1][0].toString(), u":))"_s);
        // All are one stop of the Tab key.
        QCOMPARE(press({Qt::Key_Right, Qt::Key_Tab}), u"imgicon1"_s);
    }

    void colors()
    {
        frmcolor form(m_handlers);
        open(form);
        QSignalSpy picked(&form, &frmcolor::picked);
        int number = 0;
        for (const auto& [label, value] : ownColors) {
            const QString code = QString::number(++number);
            auto& item = control(form, u"lblcin"_s + code);
            QCOMPARE(item.property("text").toString(), QString::fromLatin1(label));
            const QImage image = item.grab().toImage();
            QCOMPARE(image.pixel(8, image.height() / 2) & 0xffffff, value);
            QTest::mouseClick(&item, Qt::LeftButton);
            QCOMPARE(picked.takeFirst().at(0).toString(), code);
        }
        QTest::keyClick(form.focusWidget(), Qt::Key_Down);
        QTest::keyClick(form.focusWidget(), Qt::Key_Enter);
        QCOMPARE(picked.takeFirst().at(0).toString(), u"4"_s);
        QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
        QVERIFY(!form.isVisible());
    }

    void anotherWindowIsUsed()
    {
        frmSmileys smileys(m_handlers);
        frmcolor color(m_handlers);
        open(smileys);
        open(color);
        QWidget other;
        other.show();
        other.activateWindow();
        QTRY_VERIFY(!color.isVisible());
        QVERIFY(smileys.isVisible());
        smileys.hide(); // hidden on purpose, it does not come back
        QCoreApplication::processEvents();
        QVERIFY(!smileys.isVisible());
    }
};

QTEST_MAIN(tst_palettes)
#include "tst_palettes.moc"
