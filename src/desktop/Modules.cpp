#include "desktop/Modules.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPluginLoader>

using namespace Qt::StringLiterals;

QStringList Modules::programFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {program.filePath(u"modules"_s),
            QDir::cleanPath(program.filePath(QStringLiteral(QH_MODULES_FROM_PROGRAM)))};
}

QString Modules::fileOf(const QString& name) const
{
    for (const QString& folder : m_folders) {
        const QString file = QDir(folder).filePath(QString(name + ".so"_L1));
        if (QFileInfo(file).isFile())
            return QFileInfo(file).absoluteFilePath();
    }
    return {};
}

QObject* Modules::root(const QString& name) const
{
    const QString file = fileOf(name);
    return file.isEmpty() ? nullptr : QPluginLoader(file).instance();
}
