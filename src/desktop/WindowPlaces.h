#pragma once

#include <QObject>
#include <QRect>
#include <QString>

class Form;
class QSettings;
class QueryForm;

// Decides where each window of the program comes up, before it is seen: the room where it was
// left, private windows beside the room, small forms on the window that the user is in or beside
// their button; never out of the screen. Sizes and places are kept in a file of their own. What
// the user does to a window while it stands is left alone.
class WindowPlaces final : public QObject
{
    Q_OBJECT
public:
    // The file is made at need; one that cannot be written is passed over: nothing depends on it.
    WindowPlaces(QObject* application, QString file);

    // Windows that are still open at the end of the program.
    void rememberOpenOnes() const;

    // windows.ini in the folder for what programs remember by themselves.
    static QString usualFile();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place(QWidget& window) const;
    void placeRoom(QWidget& room) const;
    void placePrivate(QueryForm& form) const;
    void placeForm(Form& form) const;
    bool isReadable() const;
    void restoreSize(QWidget& window) const;
    void remember(const QWidget& window) const;

    QString m_file;
};
