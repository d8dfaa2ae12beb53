#include "fuzz/Feed.h"

#include <QtCore>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

// Runs inputs made by chance, or one from a file. When one of them ends the program it is left in
// a file that replays it.

extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

using namespace Qt::StringLiterals;

constexpr time_t longestInput = 60; // seconds of the processor; what takes longer hangs

QByteArray current;
QByteArray failedPath;

// Only what may be called anywhere: the program is broken.
void leaveInput()
{
    const int file = ::open(failedPath.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (file >= 0 && ::write(file, current.constData(), static_cast<size_t>(current.size())) > 0)
        std::fprintf(stderr, "the input is in %s; --replay runs it again\n",
                     failedPath.constData());
    ::close(file);
}

void die(int signal)
{
    leaveInput();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void watch()
{
    if (__sanitizer_set_death_callback)
        __sanitizer_set_death_callback(leaveInput);
    else
        std::signal(SIGSEGV, die);
    std::signal(SIGABRT, die);
    std::signal(SIGPROF, die);
}

void allow(time_t seconds)
{
    const itimerval timer{{}, {seconds, 0}};
    setitimer(ITIMER_PROF, &timer, nullptr);
}

void run(const QByteArray& input)
{
    current = input;
    allow(longestInput);
    feed(current);
    allow(0);
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

bool writeCorpus(const QString& folder, std::uint64_t first, std::uint64_t count)
{
    for (std::uint64_t i = 0; i < count; ++i) {
        QFile file(folder + u'/' + QString::number(i));
        const QByteArray input = inputOf(first + i);
        if (!file.open(QIODevice::WriteOnly) || file.write(input) != input.size())
            return false;
    }
    return true;
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
    failedPath = QFile::encodeName(QDir::current().filePath(u"failed-input"_s));
    watch();
    if (parser.isSet(u"replay"_s))
        return replay(parser.value(u"replay"_s));
    // Neighbouring seeds share no input.
    const std::uint64_t first = parser.value(u"seed"_s).toULongLong() * 1'000'000'007;
    const std::uint64_t count = parser.value(u"inputs"_s).toULongLong();
    if (parser.isSet(u"corpus"_s))
        return writeCorpus(parser.value(u"corpus"_s), first, count) ? EXIT_SUCCESS : EXIT_FAILURE;
    for (std::uint64_t i = 0; i < count; ++i)
        run(inputOf(first + i));
    std::printf("%llu inputs from seed %s\n", static_cast<unsigned long long>(count),
                qPrintable(parser.value(u"seed"_s)));
    return EXIT_SUCCESS;
}
