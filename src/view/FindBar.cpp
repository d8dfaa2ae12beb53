#include "view/FindBar.h"

#include "platform/PlainText.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

QToolButton* addButton(QBoxLayout& layout, Qt::ArrowType arrow, const QString& text)
{
    auto* button = new QToolButton;
    button->setText(text);
    button->setAccessibleName(text);
    button->setToolTip(text);
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    layout.addWidget(button);
    return button;
}

} // namespace

FindBar::FindBar(QWidget* parent)
    : QFrame(parent)
    , m_text(new QLineEdit)
    , m_result(plainLabel())
{
    setObjectName(u"findBar"_s);
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setCursor(Qt::ArrowCursor);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 4, 6, 4);
    layout->setSpacing(4);
    m_text->setObjectName(u"findText"_s);
    m_text->setPlaceholderText(u"Find in this view"_s);
    m_text->setAccessibleName(u"Find in this view"_s);
    m_text->setMinimumWidth(160);
    layout->addWidget(m_text);
    m_result->setObjectName(u"findResult"_s);
    layout->addWidget(m_result);
    auto* previous = addButton(*layout, Qt::UpArrow, u"Find previous"_s);
    auto* next = addButton(*layout, Qt::DownArrow, u"Find next"_s);
    auto* closing = addButton(*layout, Qt::NoArrow, u"Close"_s);
    closing->setText(QString(QChar(u'\u00d7')));
    connect(m_text, &QLineEdit::textEdited, this, &FindBar::TextEdited);
    connect(previous, &QToolButton::clicked, this,
            [this] { Q_EMIT FindNext(SearchDirection::Backward); });
    connect(next, &QToolButton::clicked, this,
            [this] { Q_EMIT FindNext(SearchDirection::Forward); });
    connect(closing, &QToolButton::clicked, this, &FindBar::close);
    hide();
}

void FindBar::open()
{
    showResult(true);
    show();
    raise();
    m_text->setFocus();
    m_text->selectAll();
}

QString FindBar::text() const
{
    return m_text->text();
}

void FindBar::showResult(bool found)
{
    m_result->setText(found ? QString() : u"Not found"_s);
    m_result->setVisible(!found);
    adjustSize();
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const bool backward = event->modifiers().testFlag(Qt::ShiftModifier);
        Q_EMIT FindNext(backward ? SearchDirection::Backward : SearchDirection::Forward);
        break;
    }
    case Qt::Key_Escape:
        close();
        break;
    default:
        // The view behind must not take keys that the line here did not want.
        event->accept();
    }
}

void FindBar::close()
{
    hide();
    Q_EMIT Closed();
}
