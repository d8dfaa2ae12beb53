#include "platform/NoticeBox.h"

#include <QMessageBox>

#include <cstdio>

void NoticeBox::tell(const QString& line)
{
    std::fprintf(stderr, "quillharbor: %s\n", qPrintable(line));
    if (!m_box) {
        m_lines.clear();
        m_box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Quill Harbor Messenger"), {},
                                QMessageBox::Close);
        m_box->setObjectName(QStringLiteral("NoticeBox"));
        m_box->setTextFormat(Qt::PlainText);
        m_box->setModal(false);
        m_box->setAttribute(Qt::WA_DeleteOnClose);
        m_box->setAttribute(Qt::WA_ShowWithoutActivating);
    }
    if (m_lines.contains(line))
        return;
    m_lines += line;
    m_box->setText(m_lines.join(QStringLiteral("\n\n")));
    m_box->show();
}
