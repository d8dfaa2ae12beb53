#pragma once

#include <QtTest>
#include <QtWidgets>

// Keys by their names, "Home Ctrl+C".
inline void pressKeys(QWidget* target, const QString& names)
{
    for (const QString& name : names.split(QLatin1Char(' '))) {
        const QKeyCombination key = QKeySequence(name)[0];
        QTest::keyClick(target, key.key(), key.keyboardModifiers());
    }
}

// What a user does and what is to be seen then, as a script: steps with "|" between. A step is a
// verb and its object, or "?" with a look and what it shows: "type hi|keys Return|?input ".
class Script final
{
public:
    using Verbs = QHash<QString, std::function<void(const QString& object)>>;
    using Looks = QHash<QString, std::function<QString()>>;

    Script(Verbs verbs, Looks looks)
        : m_verbs(std::move(verbs))
        , m_looks(std::move(looks))
    {
    }

    std::function<void(const QString& look)> afterLook = [](const QString&) {};

    void play(const QString& script) const
    {
        for (const QString& step : script.split(QLatin1Char('|'))) {
            const QString word = step.section(QLatin1Char(' '), 0, 0);
            if (const auto verb = m_verbs.value(word)) {
                verb(step.section(QLatin1Char(' '), 1));
                continue;
            }
            const auto look = m_looks.value(word.mid(1));
            QVERIFY2(look, qPrintable(QStringLiteral("nobody knows: ") + step));
            QTRY_COMPARE(QString(word + QLatin1Char(' ') + look()), step);
            afterLook(word.mid(1));
        }
    }

private:
    Verbs m_verbs;
    Looks m_looks;
};

// The rows of a test that plays scripts.
class Scenes final
{
public:
    Scenes() { QTest::addColumn<QString>("script"); }
    void operator()(const char* name, const QString& script) const
    {
        QTest::newRow(name) << script;
    }
};
