#pragma once

#include <QObject>
#include <QStringList>

// Parts of the program that are shared libraries of their own and are loaded when they are first
// needed, because what they stand on is large and most runs get far without it.
class Modules final
{
public:
    explicit Modules(QStringList folders)
        : m_folders(std::move(folders))
    {
    }

    // Beside the built program, then where an installed program keeps them.
    static QStringList programFolders();

    // What the module of this name implements, or nullptr when there is none or it does not load.
    template<typename Interface>
    Interface* load(const QString& name) const
    {
        return qobject_cast<Interface*>(root(name));
    }
    bool contains(const QString& name) const { return !fileOf(name).isEmpty(); }

private:
    QString fileOf(const QString& name) const;
    QObject* root(const QString& name) const;

    QStringList m_folders;
};
