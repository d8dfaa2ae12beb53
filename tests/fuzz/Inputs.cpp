#include "fuzz/Feed.h"

#include <QByteArrayList>
#include <QRandomGenerator>

namespace {

QByteArrayList listed(const char* texts)
{
    return QByteArray(texts).split('|');
}

// What stands where in the lines of a server: a source, a command word, what it is about.
const QByteArrayList sources =
    listed(":me!i@h |:bob!u@h |:s |:BOB!u@h |:zed!z@z |:x!y |:@ |:!@ |:n! |:c\rd!u@h || |: ");
const QByteArrayList words =
    listed("PRIVMSG|NOTICE|JOIN|PART|QUIT|NICK|MODE|KICK|TOPIC|PING|KILL|ERROR|INVITE|WALL|001|"
           "002|005|251|301|303|305|311|312|317|319|320|324|328|329|331|332|333|346|348|349|353|"
           "366|367|368|372|376|401|403|421|422|431|432|433|461|471|473|475|482|484|999|privmsg|"
           "join|CAP|AUTHENTICATE|900|903|904|AWAY|PONG|hello|\1|0|-1|:x|307");
const QByteArrayList pieces = listed(
    " me| #room| #ROOM| :| bob| cid| = | #other| :#room| +o| -o| +ohv| +b| +k key| +l 12|"
    " +l x| -l| +imnpst| :\1VERSION\1| :\1PING 1\1| :\1ACTION x\1| :\1| \1\1|"
    " :@me +bob ~x &y %z| 86400| 99999999999| -1| *!*@*| :a\rb| $me| \2b\2| \3| \00304|"
    " \00312,4| \3,| \26r\26| \37u| \17| :)| :-SS| http://a.b| www.a.b/#c|  | <none>| \t|"
    " \344\366| \200\201|:| 2| 31| 2cool| bob - Blocked| LS| ACK| sasl| +| TOPICLEN=-9| KICKLEN=1");
const QByteArrayList inputs =
    listed("me waves|query bob hi|query new x|msg bob $+ x|part #room|users|es \0034x|sv $version|"
           "nick $me|raw $randnick|bl|$+ $+ $time|!bots|IRC RAW x| |join $chan");
const QByteArrayList lines =
    listed("[load]|[LOAD]|startup=True| StartUp\t=  x |; comment|# more|junk|=|[|[]|[irc]|a=\"b\"|"
           "startup|\357\273\277[load]|startup=|[load");

const QByteArrayList addresses =
    listed("irc://host|ircs://host:6697|irc://[::1]:1|irc://a b|irc:|irc://h:99999|"
           "ircs://\xc3\xa4.example/|irc://h:-1|irc://@");

const QByteArray& any(QRandomGenerator& random, const QByteArrayList& texts)
{
    return texts[random.bounded(static_cast<int>(texts.size()))];
}

QByteArray lineEnd(QRandomGenerator& random)
{
    static const QByteArrayList ends = listed("\r\n|\r\n|\r\n|\n|\r|\n\n|\xff|\r\n\xff|");
    return any(random, ends);
}

QByteArray serverLines(QRandomGenerator& random)
{
    QByteArray bytes;
    for (int left = random.bounded(1, 30); left > 0; --left) {
        bytes += any(random, sources);
        bytes += any(random, words);
        for (int more = random.bounded(7); more > 0; --more)
            bytes += any(random, pieces);
        bytes += lineEnd(random);
    }
    return bytes;
}

QByteArray linesOf(QRandomGenerator& random, const QByteArrayList& table)
{
    QByteArray bytes;
    for (int left = random.bounded(1, 12); left > 0; --left) {
        bytes += any(random, table);
        if (random.bounded(3) == 0)
            bytes += any(random, pieces);
        bytes += random.bounded(8) == 0 ? "\r\n" : "\n";
    }
    return bytes;
}

QByteArray noise(QRandomGenerator& random)
{
    QByteArray bytes;
    for (int left = random.bounded(300); left > 0; --left)
        bytes += static_cast<char>(random.bounded(256));
    return bytes;
}

// Bytes are changed, lost, doubled and repeated very often.
void bend(QRandomGenerator& random, QByteArray& bytes)
{
    for (int left = random.bounded(6); left > 0 && !bytes.isEmpty(); --left) {
        const int at = random.bounded(static_cast<int>(bytes.size()));
        const int length = random.bounded(1, 20);
        // A few are longer than what 16 bits count.
        const int often = random.bounded(40) != 0 ? 0 : random.bounded(10) != 0 ? 2000 : 40000;
        const std::pair<int, QByteArray> bends[]{
            {1, QByteArray(1, static_cast<char>(random.bounded(256)))},
            {length, {}},
            {0, bytes.mid(at, length)},
            {0, QByteArray(1, '\0')},
            {0, QByteArray(often, bytes[at])},
            {0, {}},
        };
        const auto& [removed, inserted] = bends[random.bounded(int(std::size(bends)))];
        bytes.replace(at, removed, inserted);
    }
}

struct Shape
{
    char letter;
    QByteArray (*make)(QRandomGenerator& random);
};

constexpr Shape rareShapes[]{
    {'c', [](QRandomGenerator& random) { return linesOf(random, inputs); }},
    {'p', [](QRandomGenerator& random) { return linesOf(random, lines); }},
    {'t', noise},
    {'w', [](QRandomGenerator& random) { return linesOf(random, pieces); }},
    {'s', noise},
    {'n', serverLines},
    {'a', [](QRandomGenerator& random) { return any(random, addresses); }},
};

} // namespace

QByteArray inputOf(std::uint64_t number)
{
    QRandomGenerator random(static_cast<quint32>(number ^ (number >> 32)));
    const int kind = random.bounded(12);
    const Shape shape = kind < std::ssize(rareShapes) ? rareShapes[kind] : Shape{'s', serverLines};
    QByteArray bytes = shape.make(random);
    bend(random, bytes);
    return bytes.prepend(shape.letter);
}
