#include "settings/RunKey.h"

#include "settings/KeptFile.h"

#include <QFileInfo>

#include <utility>

namespace {

using namespace Qt::StringLiterals;

// A program path as the Exec key of a desktop entry wants it: quoted, and escaped once for the
// quotes and once for the value itself.
QString execValue(const QString& program)
{
    QString quoted;
    for (const QChar c : program) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            quoted += "\\\\"_L1;
        if (c == u'\\')
            quoted += u'\\'; // each backslash is written twice in a value
        if (c == u'%')
            quoted += u'%';
        if (c == u'\n')
            quoted += "\\n"_L1; // a line end of the name must not end the value
        else
            quoted += c;
    }
    return u'"' + quoted + u'"';
}

} // namespace

RunKey::RunKey(QString autostartFolder, Notices notices)
    : m_folder(std::move(autostartFolder))
    , m_notices(std::move(notices))
{
}

bool RunKey::Open()
{
    const bool opens = makePrivateFolder(m_folder) && QFileInfo(m_folder).isWritable();
    m_open |= opens; // a later failure does not close what is open
    return opens;
}

void RunKey::SetValue(const QString& name, const QString& program) const
{
    if (!m_open)
        return;
    const KeptFile entry(entryOf(name));
    const QByteArray content =
        QString("[Desktop Entry]\nType=Application\nName=Quill Harbor Messenger\n"
                "Icon=quillharbor\nTerminal=false\nExec="_L1 +
                execValue(program) + u'\n')
            .toUtf8();
    if (entry.read().bytes == content)
        return;
    if (const QString why = entry.replace(content); !why.isEmpty())
        m_notices.notKept(entry.path(), why, u"starting with the desktop"_s);
}

void RunKey::DeleteValue(const QString& name) const
{
    if (m_open)
        KeptFile(entryOf(name)).remove();
}

QString RunKey::entryOf(const QString& name) const
{
    return m_folder + u'/' + name + ".desktop"_L1;
}
