#pragma once

#include <QByteArray>
#include <QString>

// One of the program's own files, read and replaced as a whole. Only an ordinary file is touched:
// a directory, a pipe or a device that stands in its place is left alone.
class KeptFile final
{
public:
    // Who may read a file that is written. The owner's choice for one that is there already
    // counts, unless it holds a secret.
    enum class Access { OwnersChoice, OwnerOnly };

    struct Content
    {
        QByteArray bytes;
        QString trouble; // why it cannot be read; empty for one that is not there
    };

    explicit KeptFile(QString path);

    // Whether reading and writing make sense: an ordinary file, or none yet.
    bool isOurs() const;
    Content read() const;

    // Either all of the content is on the disk and stands there, or what stood there still does
    // and the answer says what was in the way. Makes the folder, for the owner only.
    QString replace(const QByteArray& content, Access access = Access::OwnersChoice) const;
    void remove() const;
    void closeToOthers() const;

    const QString& path() const { return m_path; }

private:
    QString m_path;
};

// Makes a folder with all above it, for the owner only; true when it is there.
bool makePrivateFolder(const QString& path);
