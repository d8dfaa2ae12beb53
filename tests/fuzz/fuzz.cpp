#include "fuzz/Feed.h"

#include <QtCore>

#include <cstdio>
#include <cstdlib>

#include <sys/time.h>

// Runs inputs made by chance, or one from a file. The one that is under way stands in a file: what
// ends the program leaves it there to be run again.

namespace {

using namespace Qt::StringLiterals;

constexpr time_t longestInput = 60; // seconds of the processor; what takes longer hangs

void run(const QByteArray& input)
{
    const itimerval timer{{}, {longestInput, 0}};
    setitimer(ITIMER_PROF, &timer, nullptr);
    feed(input);
}

bool writeInput(const QString& path, const QByteArray& input)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(input) == input.size();
}

int replay(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(file.errorString()));
        return EXIT_FAILURE;
    }
    run(file.readAll());
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({
        {u"seed"_s, u"Where the inputs begin (default 1)."_s, u"number"_s, u"1"_s},
        {u"inputs"_s, u"How many there are (default 3000)."_s, u"number"_s, u"3000"_s},
        {u"replay"_s, u"Runs the input in this file and no other."_s, u"file"_s},
        {u"corpus"_s, u"Writes the inputs into this folder instead."_s, u"folder"_s},
    });
    parser.process(application);
    if (parser.isSet(u"replay"_s))
        return replay(parser.value(u"replay"_s));
    // Neighbouring seeds share no input.
    const std::uint64_t first = parser.value(u"seed"_s).toULongLong() * 1'000'000'007;
    const std::uint64_t count = parser.value(u"inputs"_s).toULongLong();
    const QString corpus = parser.value(u"corpus"_s);
    const bool isForCorpus = !corpus.isEmpty();
    const QString underWay = u"failed-input"_s;
    for (std::uint64_t i = 0; i < count; ++i) {
        const QByteArray input = inputOf(first + i);
        if (!writeInput(isForCorpus ? corpus + u'/' + QString::number(i) : underWay, input))
            return EXIT_FAILURE;
        if (!isForCorpus)
            run(input);
    }
    if (isForCorpus)
        return EXIT_SUCCESS;
    QFile::remove(underWay);
    std::printf("%llu inputs from seed %s\n", static_cast<unsigned long long>(count),
                qPrintable(parser.value(u"seed"_s)));
    return EXIT_SUCCESS;
}
