#include "common/SessionVariables.h"
#include "controls/SvgPicture.h"
#include "platform/Resources.h"
#include "support/MemoryView.h"
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

template<typename Pass>
void keep(RichTextBox& view, Pass& pass)
{
    if constexpr (std::is_same_v<Pass, SmileyPass>)
        pass.keepUp();
    else
        view.onChange([&pass] { pass.CheckRTF(); });
}

// A view that is written to, with its smileys.
template<typename View>
struct Conversation
{
    Conversation() { keep(view, pass); }
    void write(const QString& line) { TextWriter(variables).WriteView(view, line); }

    const SessionVariables variables;
    View view;
    SmileyPass pass{view};
};

QString shown(const MemoryView& view)
{
    QString text = view.Text();
    for (const QString& code : view.pictures()) {
        const qsizetype at = text.indexOf(RichTextBox::pictureCharacter);
        text.replace(at, 1, u'{' + code + u'}');
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
        static const QString rich = u":;()-><=8|DPSO~*@}%\"/\\#bro "_s;
        static const QString styles = u"\x02\x03\x1f\x16\x0f"_s;
        QString result;
        for (int i = 0; i < pieces; ++i) {
            const QLatin1StringView code = anyCode();
            switch (below(styled ? 6 : 5)) {
            case 0:
            case 1: // often the same ones
                result += below(2) ? code : QLatin1StringView(below(2) ? ":)" : ";)");
                break;
            case 2: { // one inside another
                const int cut = below(static_cast<int>(code.size()));
                result += code.left(cut) % text(1, false) % code.mid(cut);
                break;
            }
            case 3:
                result += rich[below(static_cast<int>(rich.size()))];
                break;
            case 4:
                result += below(3) ? u" "_s : u" word "_s;
                break;
            default: { // one inside another, in two runs
                const int cut = below(static_cast<int>(code.size()));
                QString split = code.left(cut) % anyCode() % code.mid(cut);
                split.insert(below(static_cast<int>(split.size()) + 1),
                             styles[below(static_cast<int>(styles.size()))]);
                result += split;
            }
            }
        }
        return result;
    }

private:
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

// The same changes of two views, until one of them is not the same.
template<typename View, typename Same>
void compareWithThePlainPass(quint32 seed, int changes, Same isSame)
{
    CodeText random(seed);
    View quick;
    View plain;
    SmileyPass quickPass(quick);
    PlainPass plainPass(plain, seed % 2 ? PlainPass::OfTheCall : PlainPass::OfTheView);
    keep(quick, quickPass);
    keep(plain, plainPass);
    for (int i = 0; i < changes; ++i) {
        const RandomChange change(random, plain.TextLength());
        change.applyTo(quick);
        change.applyTo(plain);
        const bool same = quick.Text() == plain.Text() && isSame(quick, plain);
        QVERIFY2(same, qPrintable(u"change %1, "_s.arg(i) + change.name()));
    }
}

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
            u":) a {:D} \r\nb :) {;)} \r\n"_s);
        row("exact characters", {u"a :x BRB =:)"_s}, u"a :x BRB ={:)} \r\n"_s);
        row("taken apart by an earlier one", {u"a ~:> x"_s}, u"a ~{:>} x \r\n"_s);
        row("split by a style", {u"a :\x02)"_s}, u"a {:)} \r\n"_s);
        row("the longest one, split before its end", {u"a (beer\x02)"_s}, u"a {(beer)} \r\n"_s);
        row("neighbours join when one is taken out, and block themselves at the start",
            {u":brb)"_s, u"x :)"_s}, u":{brb}) \r\nx {:)} \r\n"_s);
        // The shorter text of the replaced earlier ones moves the place of the later one.
        row("a picture goes to the offset that its code had", {u"a :) b :D c"_s},
            u"a {:)} b  {:D}c \r\n"_s);
    }
    void linesOneAfterAnother()
    {
        QFETCH(const QStringList, lines);
        QFETCH(const QString, shows);
        Conversation<MemoryView> talk;
        for (const QString& line : lines)
            talk.write(line);
        QCOMPARE(shown(talk.view), shows);
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
        int foreseen = 0;
        compareWithThePlainPass<MemoryView>(
            seed, 1000, [&](const MemoryView& quick, const MemoryView& plain) {
                foreseen = quick.linesAppended();
                const qsizetype lately = std::max<qsizetype>(plain.TextLength() - 100, 0);
                return quick.pictures() == plain.pictures() &&
                       quick.SelStart() == plain.SelStart() &&
                       quick.runs(lately) == plain.runs(lately);
            });
        QVERIFY(foreseen > 50);
    }

    // A view that has a line end for one character moves what is put into its middle.
    void equalsThePlainPassInTheChatView()
    {
        compareWithThePlainPass<ChatView>(
            99, 400, [](const ChatView& quick, const ChatView& plain) {
                const qsizetype length = plain.chatText().length();
                for (auto at = std::max<qsizetype>(length - 80, 0); at < length; ++at) {
                    if (quick.styleAt(at) != plain.styleAt(at))
                        return false;
                }
                return quick.copiedText(0, length) == plain.copiedText(0, length);
            });
    }

    // A private action puts all that has been said into the room, smileys and all.
    void aCopyOfTalkIsKeptOnce()
    {
        Conversation<ChatView> privately;
        Conversation<ChatView> room;
        for (int i = 0; i < 50; ++i)
            privately.write(u"\00312<bob>\3 some words :) of usual length"_s);
        const auto copy = [&] {
            room.write(u"\00312<"_s + privately.view.Text() + u"> \00306bob waves"_s);
            return room.view.chatText().bytes();
        };
        const qsizetype once = copy();
        for (int i = 0; i < 20; ++i)
            copy();
        QVERIFY(copy() < 6 * once);
        QCOMPARE(room.view.Text().count(u"some words \ufffc of usual length \r\n"_s), 22 * 50);
    }

    // A line costs the same at the end of a long view as at the start of it.
    void readsOnlyWhatIsNew()
    {
        Conversation<MemoryView> talk;
        const auto readFor = [&](const QString& line) {
            const qsizetype before = talk.view.charactersRead();
            talk.write(line);
            return talk.view.charactersRead() - before;
        };
        const QString line = u"\00312<nick> some :\2) brb (beer) words"_s;
        readFor(line);
        const qsizetype early = readFor(line);
        for (int i = 0; i < 500; ++i)
            readFor(line);
        QVERIFY(early > 0);
        QCOMPARE(readFor(line), early);
    }

    // Each change moves the rest of the line: there are but a few.
    void oneLineOfHundreds()
    {
        Conversation<MemoryView> talk;
        const MemoryView& view = talk.view;
        for (const QString& codes : {u":)"_s, u":) ;)brb"_s}) { // in the first line and behind it
            const qsizetype pictures = view.pictures().size();
            const int changes = view.changes();
            talk.write(u'x' + codes.repeated(300));
            QCOMPARE(view.pictures().size() - pictures, 300 * (codes.size() == 2 ? 1 : 3));
            QVERIFY(view.changes() - changes < 5);
        }
    }
};

QTEST_MAIN(tst_smileys)
#include "tst_smileys.moc"
