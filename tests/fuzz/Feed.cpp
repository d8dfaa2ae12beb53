#include "fuzz/Feed.h"

#include "common/OneLine.h"
#include "settings/ProfileText.h"
#include "settings/StoredText.h"
#include "support/RecordingDesk.h"
#include "text/ColorTables.h"
#include "wire/ServerAddress.h"
#include "wire/Windows1252.h"

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr char endOfChunk = '\xff';

void must(bool holds, const char* what, const QString& where = {})
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s: %s\n", what, qPrintable(where.left(2000)));
    std::abort();
}

// Nothing that comes in ends a handler, and nothing goes out but whole lines.
void checkJournal(RecordingDesk& desk)
{
    for (const QString& entry : desk.take()) {
        must(!entry.startsWith("FATAL"_L1), "a failure got out of a handler", entry);
        // A server of the house gets a bare line feed, which the stand-in takes for granted.
        const bool isLine = entry.endsWith("\r\n"_L1) && entry.count(u'\r') == 1 &&
                            entry.count(u'\n') == 1 &&
                            entry.toUtf8().size() <= qsizetype(512 + qstrlen("sock.SendData "));
        must(isLine || !entry.startsWith("sock.SendData"_L1), "more or less than a line was sent",
             entry);
    }
}

constexpr char house[] = "irc.example";
constexpr char today[] = "irc://irc.example";

template<const char* server>
void session(QByteArrayView bytes)
{
    RecordingDesk desk;
    desk.variables.ServerHost = QString::fromLatin1(server);
    desk.enterRoom(u"@me bob +cid"_s);
    desk.queries.OpenQuery(u"bob"_s, u"bob!u@h"_s);
    desk.variables.ListFetching = true;
    desk.variables.WhoisQuery = true;
    for (const QByteArray& chunk : bytes.toByteArray().split(endOfChunk)) {
        desk.sock.arrive(chunk);
        checkJournal(desk);
    }
    desk.sock.arrive("\n"_ba);
    checkJournal(desk);
    if (desk.sock.state() != Winsock::Connected)
        return;
    desk.sock.arrive("PING :still there\n"_ba);
    must(!desk.take().filter(u"PONG :still there"_s).isEmpty(), "the session is dead");
}

void address(QByteArrayView bytes)
{
    const ServerAddress found = ServerAddress::parse(QString::fromUtf8(bytes));
    if (!found.isValid())
        return;
    must(!found.host.isEmpty() && found.port > 0 && found.port < 65536, "an address of nothing");
    must(!found.isStandard() || found.host == found.host.simplified(), "an address of two lines");
}

// A line each, to the room and to a conversation in turn.
void commands(QByteArrayView bytes)
{
    RecordingDesk desk;
    desk.enterRoom();
    desk.queries.OpenQuery(u"bob"_s, {});
    bool toRoom = false;
    for (const QByteArray& line : bytes.toByteArray().split('\n')) {
        const QString text = oneLine(fromWindows1252(line)); // no field takes more
        if (text.startsWith("list"_L1, Qt::CaseInsensitive))
            continue; // raises, as it must
        toRoom = !toRoom;
        desk.commands.ProcessInput(toRoom ? u"#room"_s : u"bob"_s, text);
        desk.box.content = text.left(InputLine::maxLength);
        desk.inputLine.KeyPress('\r');
        checkJournal(desk);
    }
}

void profile(QByteArrayView bytes)
{
    const qsizetype cut = std::min<qsizetype>(bytes.size(), 8);
    const QByteArray value = bytes.first(cut).toByteArray().replace('\n', "").trimmed();
    const QByteArray before = bytes.sliced(cut).toByteArray();
    ProfileText text(before);
    const std::optional<QByteArray> old = text.value("load", "startup");
    text.setValue("load", "startup", value);
    must(text.value("load", "startup") == value, "a written value is not read back");
    if (old) {
        must(text.text().size() == before.size() - old->size() + value.size(),
             "more was written than the value");
        text.setValue("load", "startup", *old);
        must(text.text() == before, "the old value does not bring the old file back");
    } else {
        must(text.text().size() >= before.size() + value.size(), "something got lost");
    }
}

void store(QByteArrayView bytes)
{
    const QString text = QString::fromUtf8(bytes);
    must(fromStoredText(toStoredText(text)) == text, "a stored text changes", text);
    must(!toStoredText(text).contains('\n'), "a stored text has a line end", text);
    fromStoredText(bytes);
}

void colors(QByteArrayView bytes)
{
    const QString text =
        fromWindows1252(bytes.toByteArray().replace('\n', ' ').replace('\r', ' ')); // one line
    const SessionVariables variables;
    for (const bool raw : {false, true}) {
        MemoryView view;
        if (raw)
            TextWriter::WriteRaw(view, text);
        else
            skipRest([&] { TextWriter(variables).WriteView(view, text); });
        // What is written is a part of what was given: nothing is made up but the line's end.
        must(view.TextLength() <= text.size() + 3, "a line grew", text);
    }
    for (qsizetype from = 0; from < std::min<qsizetype>(text.size(), 64); ++from)
        IsColorSpec(QStringView(text).sliced(from, std::min<qsizetype>(6, text.size() - from)));
}

struct Kind
{
    char letter;
    void (*take)(QByteArrayView bytes);
};

constexpr Kind kinds[]{
    {'s', session<house>}, {'c', commands},       {'p', profile}, {'t', store},
    {'w', colors},         {'n', session<today>}, {'a', address},
};

} // namespace

void feed(QByteArrayView input)
{
    if (input.isEmpty())
        return;
    for (const Kind& kind : kinds) {
        if (input.front() == kind.letter)
            return kind.take(input.sliced(1));
    }
    session<house>(input);
}
