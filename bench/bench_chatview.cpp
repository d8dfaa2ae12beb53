#include "view/ChatView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryFile>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <functional>
#include <memory>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int nameWidth = 32;
constexpr auto drawing = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 18 18'>"
                         "<circle cx='9' cy='9' r='8' fill='#f5c542' stroke='#7a5c00'/></svg>";

double cpuSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

qint64 residentBytes()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

// Writes lines the way the program does: run by run at the end of the view, with a pass after
// every change that turns a code into a picture.
class Writer final
{
public:
    Writer(RichTextBox& view, QString pictures)
        : m_view(view)
        , m_picture{u":)"_s, std::move(pictures), {18, 18}}
    {
        view.onChange([this] { insertPictures(); });
    }

    void writeLine(int number)
    {
        const EditBlock block(m_view);
        m_view.setSelFontSize(10);
        m_view.setSelFontName(u"Arial"_s);
        m_view.setSelStart(m_view.TextLength());
        m_view.setSelColor(0);
        m_view.setSelBold(false);
        m_view.setSelUnderline(false);
        m_view.setSelStrikeThru(false);
        if (number % 5 == 0)
            m_view.setSelColor(0x00007f);
        writeRun("<nick"_L1 + QString::number(number % 97) + "> "_L1);
        if (number % 7 == 0)
            m_view.setSelBold(true);
        writeRun(u"says a few words of the usual length to everybody "_s);
        if (number % 3 == 0)
            writeRun(u"and smiles :) "_s);
        m_view.setSelBold(false);
        writeRun(u"\r\n"_s);
    }

private:
    void writeRun(const QString& run)
    {
        m_view.setSelStart(m_view.TextLength());
        m_view.setSelText(run);
    }

    void insertPictures()
    {
        const qsizetype from = std::max<qsizetype>(m_searched - 1, 0);
        const qsizetype code = m_view.TextRange(from, m_view.TextLength() - from).indexOf(u":)"_s);
        m_searched = m_view.TextLength();
        if (code < 0)
            return;
        m_searched = from + code;
        m_view.setSelStart(from + code);
        m_view.setSelLength(2);
        m_view.setSelText({});
        m_view.setSelStart(from + code);
        m_view.InsertPicture(m_picture);
    }

    RichTextBox& m_view;
    InlinePicture m_picture;
    qsizetype m_searched = 0;
};

std::unique_ptr<ChatView> shownView()
{
    auto view = std::make_unique<ChatView>();
    view->resize(700, 500);
    view->show();
    return view;
}

void print(const QString& row, const QString& result)
{
    QTextStream(stdout) << row.leftJustified(nameWidth) << result << Qt::endl;
}

QString number(double value, int decimals, int width)
{
    return QString::number(value, 'f', decimals).rightJustified(width);
}

struct Burst
{
    int lines;
    bool yields;
};

void runBurst(const QString& row, const Burst& burst, const QString& picture)
{
    const std::unique_ptr<ChatView> view = shownView();
    Writer writer(*view, picture);
    for (int i = 0; i < 100; ++i) // fonts and the first frame
        writer.writeLine(i);
    QCoreApplication::processEvents();
    const qint64 memory = residentBytes();
    const qsizetype characters = view->TextLength();
    const double cpu = cpuSeconds();
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < burst.lines; ++i) {
        writer.writeLine(i);
        if (burst.yields)
            QCoreApplication::processEvents();
    }
    const double written = static_cast<double>(time.nsecsElapsed()) / 1000;
    const double writingCpu = cpuSeconds() - cpu;
    // Settled is when the newest line is on the screen.
    QTimer settled;
    settled.setSingleShot(true);
    settled.start(20);
    while (settled.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    view->grab();
    const double usedCpu = cpuSeconds() - cpu;
    const auto text = static_cast<double>(view->TextLength() - characters);
    const auto grown = static_cast<double>(residentBytes() - memory);
    // Where other programs want the processor too, the second number is the one to look at.
    print(row, number(written / burst.lines, 2, 10) +
                   number(writingCpu * 1e6 / burst.lines, 2, 14) + number(usedCpu, 2, 9) +
                   number(text / burst.lines, 0, 9) + number((grown - text) / burst.lines, 0, 12));
}

std::unique_ptr<ChatView> filled(int lines, const QString& picture)
{
    std::unique_ptr<ChatView> view = shownView();
    Writer writer(*view, picture);
    for (int i = 0; i < lines; ++i)
        writer.writeLine(i);
    view->onChange({});
    view->grab();
    return view;
}

// How long each call took, put together as median and worst.
class Times final
{
public:
    void measure(const std::function<void()>& action)
    {
        QElapsedTimer time;
        time.start();
        action();
        m_milliseconds.append(static_cast<double>(time.nsecsElapsed()) / 1e6);
    }

    QString text() const
    {
        QList<double> sorted = m_milliseconds;
        std::sort(sorted.begin(), sorted.end());
        return QString::number(sorted.size()) + " times, median "_L1 +
               number(sorted[sorted.size() / 2], 2, 0) + " ms, worst "_L1 +
               number(sorted.last(), 2, 0) + " ms"_L1;
    }

private:
    QList<double> m_milliseconds;
};

struct Reading
{
    int lines;
};

void runResize(const QString& row, const Reading& reading, const QString& picture)
{
    const std::unique_ptr<ChatView> view = filled(reading.lines, picture);
    Times times;
    for (int i = 0; i < 40; ++i) {
        times.measure([&] {
            view->resize(500 + 10 * (i % 2 ? i : 40 - i), 500);
            QCoreApplication::processEvents();
            view->grab();
        });
    }
    print(row, "resize, painted: "_L1 + times.text());
}

void runPageUp(const QString& row, const Reading& reading, const QString& picture)
{
    const std::unique_ptr<ChatView> view = filled(reading.lines, picture);
    QScrollBar* bar = view->verticalScrollBar();
    while (bar->maximum() == 0)
        QCoreApplication::processEvents();
    bar->setValue(bar->maximum());
    Times times;
    while (bar->value() > 0) {
        times.measure([&] {
            bar->triggerAction(QAbstractSlider::SliderPageStepSub);
            view->grab();
        });
    }
    print(row, "page up, painted: "_L1 + times.text());
}

void runFind(const QString& row, const Reading& reading, const QString& picture)
{
    const std::unique_ptr<ChatView> view = filled(reading.lines, picture);
    Times times;
    for (int i = 0; i < 10; ++i) {
        times.measure([&] {
            const auto found =
                findText(view->chatText(), u"is not there"_s, 0, SearchDirection::Forward);
            if (found)
                qFatal("found what nobody wrote");
        });
    }
    print(row, "through the whole text: "_L1 + times.text());
}

// Lines as long as a line can be, each first seen and painted once.
void runLongLines(const QString& row, const Reading& reading, const QString&)
{
    const std::unique_ptr<ChatView> view = shownView();
    const QStringList texts{u"words of some length "_s.repeated(1560), QString(32'767, u'w'),
                            u"e"_s + QString(32'766, QChar(0x301))};
    Times times;
    for (int i = 0; i < reading.lines; ++i) {
        times.measure([&] {
            view->setSelStart(view->TextLength());
            view->setSelText(texts[i % texts.size()] + "\r\n"_L1);
            view->grab();
        });
    }
    print(row, "32,767 characters, painted: "_L1 + times.text());
}

struct Row
{
    QString name;
    std::function<void(const QString& row, const QString& picture)> run;
};

Row burst(const QString& name, const Burst& burst)
{
    return {name,
            [burst](const QString& row, const QString& picture) { runBurst(row, burst, picture); }};
}

Row reading(const QString& name, void (*run)(const QString&, const Reading&, const QString&),
            const Reading& reading)
{
    return {name, [run, reading](const QString& row, const QString& picture) {
                run(row, reading, picture);
            }};
}

QList<Row> allRows()
{
    return {
        burst(u"new-burst-2000"_s, {2'000, false}),
        burst(u"new-burst-50000"_s, {50'000, false}),
        burst(u"new-burst-200000"_s, {200'000, false}),
        burst(u"new-burst-2000-yielding"_s, {2'000, true}),
        burst(u"new-burst-50000-yielding"_s, {50'000, true}),
        burst(u"new-burst-200000-yielding"_s, {200'000, true}),
        reading(u"new-resize-200000"_s, runResize, {200'000}),
        reading(u"new-pageup-200000"_s, runPageUp, {200'000}),
        reading(u"new-find-200000"_s, runFind, {200'000}),
        reading(u"new-long-lines"_s, runLongLines, {9}),
    };
}

QString header()
{
    return u"row"_s.leftJustified(nameWidth) +
           "   us/line   CPU us/line    CPU s   text/l    memory/l"_L1;
}

} // namespace

// Runs one row; --rows lists them, --header is the line above the bursts.
int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const QString wanted = QCoreApplication::arguments().value(1);
    QTextStream out(stdout);
    if (wanted == "--header"_L1)
        out << header() << '\n';
    QTemporaryFile picture(QDir::tempPath() + "/bench_XXXXXX.svg"_L1);
    if (!picture.open())
        return 1;
    picture.write(drawing);
    picture.flush();
    for (const Row& row : allRows()) {
        if (wanted == "--rows"_L1)
            out << row.name << '\n';
        else if (wanted == row.name)
            row.run(row.name, picture.fileName());
    }
    return 0;
}
