#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>

class QMessageBox;

// A small window with lines that nobody asked for. It takes no focus and holds nothing up; while
// it stands, new lines join those that it shows. They go to standard error as well.
class NoticeBox final
{
public:
    void tell(const QString& line);

private:
    QStringList m_lines;
    QPointer<QMessageBox> m_box;
};
