#include "common/SessionVariables.h"
#include "controls/SvgPicture.h"
#include "platform/Resources.h"
#include "text/CheckRTF.h"
#include "text/SmileyTable.h"
#include "text/TextWriter.h"
#include "view/ChatView.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// What SmileyPass must equal: the whole text is searched for every code, and every change starts
// the same again inside the pass under way. The counter belongs to the call or to the view.
class PlainPass
{
public:
    enum Counter { OfTheCall, OfTheView };

    PlainPass(RichTextBox& view, Counter counter)
        : m_view(view)
        , m_counter(counter)
    {
        std::ranges::transform(smileys::table, m_codes.begin(), &Smiley::code);
    }

    void CheckRTF()
    {
        std::size_t own = 0;
        std::size_t& row = m_counter == OfTheCall ? own : m_shared;
        for (row = 0; row < smileys::table.size(); ++row) {
            const Smiley& smiley = smileys::table[row];
            const qsizetype pos = m_view.Text().indexOf(m_codes[row]);
            if (pos <= 0)
                continue;
            m_view.setSelStart(pos);
            m_view.setSelLength(smiley.code.size());
            m_view.setSelText({});
            m_view.setSelStart(pos);
            m_view.InsertPicture({smiley.code, {}, smiley.size});
        }
    }

private:
    RichTextBox& m_view;
    Counter m_counter;
    std::size_t m_shared = 0;
    std::array<QString, smileys::table.size()> m_codes;
};

// Each character, with pictures as their codes in braces.
QString shown(const ChatView& view)
{
    QString text;
    for (qsizetype at = 0; at < view.chatText().length(); ++at) {
        const QString character = view.copiedText(at, at + 1);
        text += character.size() > 1 ? u'{' + character + u'}' : character;
    }
    return text;
}

// Text that is mostly codes, halves of codes and codes inside codes.
class CodeText
{
public:
    explicit CodeText(quint32 seed)
        : m_random(seed)
    {
    }

    // Talk with a smiley now and then, mostly alone between blanks.
    QString talk()
    {
        QString result;
        for (int words = 1 + below(6); words > 0; --words) {
            const QString code = anyCode();
            result += below(6) ? u"word"_s : below(6) ? code : code + u'x';
            if (below(6) == 0)
                result.insert(below(static_cast<int>(result.size()) + 1), anyStyle());
            result += u' ';
        }
        return result;
    }

    int below(int limit) { return static_cast<int>(m_random.bounded(limit)); }

    // The longest one more often than the others.
    QLatin1StringView anyCode()
    {
        if (below(8) == 0)
            return "(beer)"_L1;
        return smileys::table[static_cast<std::size_t>(below(smileys::table.size()))].code;
    }

    QString anyStyle()
    {
        return QStringList{u"\2"_s, u"\3"_s, u"\0034"_s, u"\37"_s, u"\26"_s, u"\17"_s}[below(6)];
    }

    QString text(int pieces, bool styled)
    {
        QString result;
        for (; pieces > 0; --pieces) {
            QString next = piece();
            if (styled && below(6) == 0)
                next.insert(below(static_cast<int>(next.size()) + 1), anyStyle());
            result += next;
        }
        return result;
    }

private:
    QString piece()
    {
        static const QString rich = u":;()-><=8|DPSO~*@}%\"/\\#bro "_s;
        const QLatin1StringView code = anyCode();
        const int cut = below(static_cast<int>(code.size()));
        const QString pieces[]{
            code,
            below(2) ? u":)"_s : u";)"_s, // often the same ones
            code.left(cut) + (below(2) ? anyCode() : anyCode().left(2)) + code.mid(cut),
            rich[below(static_cast<int>(rich.size()))],
            below(3) ? u" "_s : u" word "_s,
        };
        return pieces[below(5)];
    }

    QRandomGenerator m_random;
};

// One change of a kind that a view can go through, the same on each of the views.
class RandomChange
{
public:
    RandomChange(CodeText& random, qsizetype textLength)
        : m_kind(random.below(24))
        , m_text(m_kind > 14 ? random.talk() : random.text(1 + random.below(14), m_kind > 9))
        , m_start(random.below(2) ? random.below(8)
                                  : random.below(static_cast<int>(textLength) + 3))
        , m_length(random.below(4) ? random.below(9) : 0)
    {
    }

    void applyTo(RichTextBox& view) const
    {
        SessionVariables variables;
        if (m_kind == 0)
            view.setText({});
        else if (m_kind == 1)
            view.setText(m_text);
        else if (m_kind < 8) {
            view.setSelStart(m_start);
            view.setSelLength(m_length);
            view.setSelText(m_kind < 4 ? QString() : m_text);
        } else if (m_kind == 8) {
            view.setSelStart(m_start);
            view.InsertPicture({u"own"_s, {}, {}});
        } else if (m_kind < 14)
            TextWriter::WriteRaw(view, m_text);
        else
            TextWriter(variables).WriteView(view, m_text);
    }

    QString name() const
    {
        return u"kind %1 at %2+%3: %4"_s.arg(m_kind).arg(m_start).arg(m_length).arg(m_text);
    }

private:
    int m_kind;
    QString m_text;
    qsizetype m_start;
    qsizetype m_length;
};

} // namespace

class tst_smileys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void picturesHaveTheirSizes()
    {
        for (const Smiley& smiley : smileys::table) {
            QCOMPARE(SvgPicture(smiley.picture()).sizeHint(), smiley.size);
            QVERIFY(!Qt::mightBeRichText(smiley.toolTip()));
        }
        QCOMPARE(SvgPicture(smileys::extra.picture()).sizeHint(), smileys::extra.size);
    }

    void linesOneAfterAnother_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("shows");
        const auto row = [](const char* name, const QStringList& lines, const QString& shows) {
            QTest::newRow(name) << lines << shows;
        };
        row("a code at the start stays, and so do those like it", {u":) a :D"_s, u"b :) ;)"_s},
            u":) a {:D} \nb :) {;)} \n"_s);
        row("exact characters", {u"a :x BRB =:)"_s}, u"a :x BRB ={:)} \n"_s);
        row("taken apart by an earlier one", {u"a ~:> x"_s}, u"a ~{:>} x \n"_s);
        row("split by a style", {u"a :\x02)"_s}, u"a {:)} \n"_s);
        row("the longest one, split before its end", {u"a (beer\x02)"_s}, u"a {(beer)} \n"_s);
        row("neighbours join when one is taken out, and block themselves at the start",
            {u":brb)"_s, u"x :)"_s}, u":{brb}) \nx {:)} \n"_s);
        // The shorter text of the replaced earlier ones moves the place of the later one.
        row("a picture goes to the offset that its code had", {u"a :) b :D c"_s},
            u"a {:)} b  {:D}c \n"_s);
        const QString words = u"word "_s.repeated(16);
        row("no picture goes into a line end", {words + u":):):D"}, words + u"{:)}{:)} {:D}\n");
    }
    void linesOneAfterAnother()
    {
        QFETCH(const QStringList, lines);
        QFETCH(const QString, shows);
        const SessionVariables variables;
        ChatView view;
        SmileyPass pass(view);
        pass.keepUp();
        for (const QString& line : lines)
            TextWriter(variables).WriteView(view, line);
        QCOMPARE(shown(view), shows);
    }

    void equalsThePlainPass_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 6; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }
    void equalsThePlainPass()
    {
        QFETCH(const quint32, seed);
        CodeText random(seed);
        ChatView quick;
        ChatView plain;
        SmileyPass quickPass(quick);
        PlainPass plainPass(plain, seed % 2 ? PlainPass::OfTheCall : PlainPass::OfTheView);
        int foreseen = 0;
        int changes = 0;
        quick.onLine([&](const FormattedLine& line) {
            const auto outcome = quickPass.foresee(line);
            foreseen += outcome ? 1 : 0;
            return outcome;
        });
        quick.onChange([&] {
            ++changes;
            quickPass.CheckRTF();
        });
        plain.onChange([&] { plainPass.CheckRTF(); });
        for (int i = 0; i < 700; ++i) {
            const RandomChange change(random, plain.TextLength());
            change.applyTo(quick);
            change.applyTo(plain);
            const qsizetype length = plain.chatText().length();
            bool same = quick.Text() == plain.Text() && quick.SelStart() == plain.SelStart() &&
                        quick.copiedText(0, length) == plain.copiedText(0, length);
            for (auto at = std::max<qsizetype>(length - 80, 0); same && at < length; ++at)
                same = quick.styleAt(at) == plain.styleAt(at);
            QVERIFY2(same, qPrintable(u"change %1, "_s.arg(i) + change.name()));
        }
        // Neither of the quick ways is out of use.
        QVERIFY(foreseen > 50);
        changes = 0;
        TextWriter::WriteRaw(quick, u"x:)"_s.repeated(100));
        QVERIFY(changes < 5);
    }
};

QTEST_MAIN(tst_smileys)
#include "tst_smileys.moc"
