#pragma once

#include "common/RunTimeError.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <type_traits>
#include <utility>

class Form;

// Stands while a handler of this object runs, which keeps a form from being deleted meanwhile.
class RunningHandler final
{
public:
    explicit RunningHandler(QObject* context);
    ~RunningHandler();
    Q_DISABLE_COPY_MOVE(RunningHandler)

private:
    QPointer<Form> m_form;
};

// The edge between Qt's event delivery and our event handlers: whatever a handler throws stops
// here, because an exception must never cross Qt's own frames. A handler that has no catch-all of
// its own ends in `fatal`, which is expected to show the error and end the program.
class Handlers final
{
public:
    using Fatal = std::function<void(const QString& message)>;

    explicit Handlers(Fatal fatal)
        : m_fatal(std::move(fatal))
    {
    }

    template<typename Handler>
    void run(Handler&& handler) const
    {
        try {
            std::forward<Handler>(handler)();
        } catch (const RunTimeError& error) {
            m_fatal(error.message());
        } catch (const std::exception& error) {
            m_fatal(QString::fromLocal8Bit(error.what()));
        }
    }

    // The same for a handler of this object that no signal of ours begins.
    template<typename Handler>
    void runOf(QObject* context, Handler&& handler) const
    {
        const RunningHandler running(context);
        run(std::forward<Handler>(handler));
    }

    // Like QObject::connect(); the handler takes all of the signal's arguments or none. It dies
    // with its context.
    template<typename Sender, typename Signal, typename Handler>
    void connect(const Sender* sender, Signal signal, QObject* context, Handler handler) const
    {
        QObject::connect(
            sender, signal, context,
            [this, context, handler = std::move(handler)](const auto&... arguments) mutable {
                runOf(context, [&] { call(handler, arguments...); });
            });
    }

private:
    template<typename Handler, typename... Arguments>
    static void call(Handler& handler, const Arguments&... arguments)
    {
        if constexpr (std::is_invocable_v<Handler&, const Arguments&...>)
            handler(arguments...);
        else
            handler();
    }

    Fatal m_fatal;
};

// A catch-all that gives up what is left of the block.
template<typename Block>
void skipRest(Block&& block)
{
    try {
        std::forward<Block>(block)();
    } catch (const RunTimeError&) { // NOLINT(bugprone-empty-catch): passing over it is the point
    }
}

// A catch-all around each statement: a failure costs the one that it happens in.
template<typename... Statements>
void resumeNext(Statements&&... statements)
{
    (skipRest(std::forward<Statements>(statements)), ...);
}
