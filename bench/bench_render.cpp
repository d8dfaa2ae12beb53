#include "common/SessionVariables.h"
#include "platform/Resources.h"
#include "talk/QueryForm.h"
#include "text/IncomingText.h"
#include "text/Links.h"
#include "text/TextWriter.h"
#include "wire/LineSink.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <array>
#include <functional>

using namespace Qt::StringLiterals;

// What text costs in a private window, as it is written there: by the writer, with the smiley
// pass at every change of the view.

namespace {

class Nowhere final : public LineSink
{
public:
    void SendData(const QString&) override {}
};

struct Conversation
{
    Conversation()
    {
        variables.FontName = u"Arial"_s;
        variables.FontSize = 10;
        window.show();
    }

    void hear(int lines, const std::function<QString(int)>& text)
    {
        for (int i = 0; i < lines; ++i) {
            incoming.PutText(window.DataIn(), u"peer"_s, text(i));
            QApplication::processEvents();
        }
    }

    SessionVariables variables;
    TextWriter writer{variables};
    Nowhere server;
    IncomingText incoming{IncomingText::privateTalk, writer, server};
    QueryForm window;
};

QString plainLine(int)
{
    return u"a few words of the usual length with http://harbor.example/pier in them"_s;
}

QString everySecondSmiles(int number)
{
    return number % 2 == 0 ? u"a few words of the usual length and a smile :) with them"_s
                           : u"a few words of the usual length and no smile with them"_s;
}

double microseconds(const QElapsedTimer& time, int count)
{
    return static_cast<double>(time.nsecsElapsed()) / 1e3 / count;
}

double privateLines()
{
    constexpr int lines = 10'000;
    Conversation conversation;
    QElapsedTimer time;
    time.start();
    conversation.hear(lines, plainLine);
    return microseconds(time, lines);
}

// The pointer moves over the newest lines of a long conversation.
double wordsUnderThePointer()
{
    constexpr int moves = 20'000;
    Conversation conversation;
    conversation.hear(10'000, plainLine);
    ChatView& view = conversation.window.DataIn();
    qsizetype found = 0;
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < moves; ++i) {
        const QPoint point(10 + i % 400, 20 + i / 7 % (view.height() - 40));
        found += WordAt(view, view.offsetAt(point)).size();
    }
    return found > 0 ? microseconds(time, moves) : 0;
}

double smilingLines()
{
    constexpr int lines = 50'000;
    Conversation conversation;
    QElapsedTimer time;
    time.start();
    conversation.hear(lines, everySecondSmiles);
    return microseconds(time, lines);
}

struct Row
{
    QLatin1StringView name;
    double (*measure)();
};

constexpr std::array<Row, 3> rows{{
    {"private window, line of 10,000"_L1, privateLines},
    {"WordAt, move over 10,000 lines"_L1, wordsUnderThePointer},
    {"line of 50,000, every 2nd smiles"_L1, smilingLines},
}};

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    loadResources();
    QTextStream out(stdout);
    for (const Row& row : rows)
        out << QString(row.name).leftJustified(36) << QString::number(row.measure(), 'f', 2)
            << " us\n"
            << Qt::flush;
    return 0;
}
