#pragma once

#include "settings/Notices.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>

class Clock;

// Keeps what views show as plain text: a file a day and room or nick, UTF-8, for its owner only.
// Lines are collected and written by a thread of its own, so that no disk ever holds up a line.
// What cannot be written is told once for each file and given up.
class TalkLog final : public QObject
{
    Q_OBJECT
public:
    TalkLog(QString folder, const Clock& clock, Notices notices);
    ~TalkLog() override;

    // The text may hold the codes that chat text has. Of a room, or of one chatter.
    void keep(const QString& name, const QString& text);

    // Waits until all is written, for a moment at the most.
    void finish();

    // The file in the folder; two names have one file if they differ in case alone.
    static QString fileOf(const QString& name, const QDate& day);

    struct Line
    {
        QDateTime when;
        QString name;
        QString text;
    };

private:
    void write();

    QString m_folder;
    const Clock& m_clock;
    Notices m_notices;
    QList<Line> m_lines;
    QTimer m_soon;
    QThreadPool m_writer;
};
