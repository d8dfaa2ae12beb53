#pragma once

#include <QString>

class Modules;
class WebEngine;

// The web engine, loaded when a page is first asked for.
class WebModule final
{
public:
    struct Answer
    {
        WebEngine* engine = nullptr;
        QString reason; // why there is none, for the user
    };

    explicit WebModule(const Modules& modules)
        : m_modules(modules)
    {
    }

    Answer engine() const;

private:
    const Modules& m_modules;
};
