#include "platform/NoticeBox.h"

#include "platform/PlainText.h"

#include <cstdio>

void NoticeBox::tell(const QString& line)
{
    std::fprintf(stderr, "quillharbor: %s\n", qPrintable(line));
    if (!m_box) {
        m_lines.clear();
        m_box = plainBox(QMessageBox::Warning, QStringLiteral("Quill Harbor Messenger"), {},
                         QMessageBox::Close);
        m_box->setObjectName(QStringLiteral("NoticeBox"));
        m_box->setModal(false);
        // Nobody looks behind a window that comes up a moment later.
        m_box->setWindowFlag(Qt::WindowStaysOnTopHint);
        m_box->setAttribute(Qt::WA_DeleteOnClose);
        m_box->setAttribute(Qt::WA_ShowWithoutActivating);
    }
    if (m_lines.contains(line))
        return;
    m_lines += line;
    m_box->setText(m_lines.join(QStringLiteral("\n\n")));
    m_box->show();
}
