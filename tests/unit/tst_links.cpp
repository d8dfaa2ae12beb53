#include "support/MemoryView.h"
#include "text/Links.h"

#include <QDesktopServices>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_links : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void linksOfALine()
    {
        const QString line =
            u"<bob> see www.a.org/x, (http://www.b.org) <https://c.org>! mailto:ann@d.org. "
            "page.html irc://e.org file:///etc/passwd http://f.org/y?z=1."_s;
        QStringList found;
        for (const LinkSpan& span : linksIn(line))
            found += line.sliced(span.start, span.end - span.start);
        QCOMPARE(found, QStringList({u"www.a.org/x"_s, u"http://www.b.org"_s, u"https://c.org"_s,
                                     u"mailto:ann@d.org"_s, u"http://f.org/y?z=1"_s}));
    }

    void words_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("link");
        QTest::addColumn<bool>("pointer");
        QTest::addColumn<QString>("leaves"); // as what; empty: not at all

        const auto row = [](const char* name, const QString& word, bool link, bool pointer,
                            const QString& leaves = {}) {
            QTest::newRow(name) << word << link << pointer << leaves;
        };
        row("https has no rule", u"https://a.org"_s, false, false, u"https://a.org"_s);
        row("https page", u"https://a.org/x.htm"_s, true, true, u"https://a.org/x.htm"_s);
        row("ftp, any case", u"FTP://a.org"_s, true, true, u"ftp://a.org"_s);
        row("mail", u"mailto:ann@a.org"_s, true, true, u"mailto:ann@a.org"_s);
        row("mail to nobody", u"mailto:"_s, true, true);
        row("mail with a file", u"mailto:a@a.org?Attach=/etc/passwd"_s, true, true);
        row("bare address", u"www.a.org"_s, true, true, u"http://www.a.org"_s);
        row("page by its end", u"page.HTML"_s, true, true);
        row("end with a full stop", u"page.htm."_s, false, false);
        row("local page", u"file:///etc/index.html"_s, true, true);
        row("script", u"javascript:alert(1).html"_s, true, true);
        row("no host", u"http:///etc/passwd"_s, true, true);
        row("room", u"#Harbor"_s, false, true);
        row("server", u"IRC.a.org"_s, false, true);
        row("address inside", u"see:http://a.org"_s, false, false);
        row("word behind a line end", u"\nhttp://a.org"_s, false, false);
    }
    void words()
    {
        QFETCH(QString, word);
        QFETCH(bool, link);
        QFETCH(bool, pointer);
        QFETCH(QString, leaves);

        QCOMPARE(isLink(word), link);
        QCOMPARE(pointerFor(word), pointer ? MousePointer::Custom : MousePointer::Arrow);
        QCOMPARE(outgoingUrl(word).value_or(QUrl()).toString(), leaves);
    }

    void onlyAllowedSchemesReachTheDesktop()
    {
        static const QStringList schemes{u"http"_s, u"mailto"_s, u"file"_s, u"javascript"_s};
        for (const QString& scheme : schemes)
            QDesktopServices::setUrlHandler(scheme, this, "opened");
        DesktopLinkOpener opener;
        for (const QString& link : {u"www.a.org"_s, u"file:///etc/index.html"_s,
                                    u"javascript:x.html"_s, u"mailto:ann@a.org"_s})
            opener.OpenLink(link);
        for (const QString& scheme : schemes)
            QDesktopServices::unsetUrlHandler(scheme);
        QCOMPARE(m_opened, QStringList({u"http://www.a.org"_s, u"mailto:ann@a.org"_s}));
    }

    void wordAt()
    {
        const auto at = [](const QString& text, const QString& under, int further) {
            MemoryView view;
            view.setText(text);
            return WordAt(view, text.indexOf(under) + further);
        };
        QCOMPARE(at(u"see (http://a.org/x), now"_s, u"http"_s, 1), u"http://a.org/x"_s);
        QCOMPARE(at(u"now \r\n#room is full"_s, u"#room"_s, 1), u"\n#room"_s);
        QCOMPARE(at(u"a last"_s, u"last"_s, 2), u"las"_s);
        QCOMPARE(at(u"first word"_s, u"first"_s, 1), QString()); // nothing delimits it
        // Shorter and longer than what is read at once.
        const QString around = u"words "_s.repeated(30);
        for (int size = 1; size < 300; ++size) {
            const QString word(size, u'w');
            const QString text = around + u'(' + word + u')' + around;
            QCOMPARE(at(text, u"("_s, 2), word);
            QCOMPARE(at(text, u")"_s, 0), word);
        }
        // Characters of two units stay whole.
        QCOMPARE(at(u"🙂 🙂www.a.org 🙂"_s, u"www"_s, 1), u"🙂www.a.org"_s);
        QCOMPARE(at(u"a last🙂"_s, u"last"_s, 2), u"last"_s);
    }

public Q_SLOTS:
    void opened(const QUrl& url) { m_opened += url.toString(); }

private:
    QStringList m_opened;
};

QTEST_GUILESS_MAIN(tst_links)
#include "tst_links.moc"
