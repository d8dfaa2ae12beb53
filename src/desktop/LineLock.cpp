#include "desktop/LineLock.h"

#include "controls/SvgPicture.h"
#include "platform/PlainText.h"
#include "wire/Tls.h"

#include <QLocale>
#include <QPainter>

namespace {

using namespace Qt::StringLiterals;

constexpr int side = 16;

QString wordsOf(const QString& server, const LinePrivacy& privacy)
{
    if (!privacy.isPrivate())
        return "The line to "_L1 + server +
               " is open: whoever carries it can read along, passwords too."_L1;
    return "The line to "_L1 + server + " is private, by "_L1 + privacy.protocol + " ("_L1 +
           privacy.cipher + ").\nIts certificate is for "_L1 + privacy.subject + ", issued by "_L1 +
           privacy.issuer + ", good until "_L1 +
           QLocale().toString(privacy.expiry.toLocalTime().date(), QLocale::ShortFormat) + u'.';
}

} // namespace

LineLock::LineLock(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(u"lblLine"_s);
    setFixedSize(side, side);
    showNoLine();
}

void LineLock::showLine(const QString& server, const LinePrivacy& privacy)
{
    show(privacy.isPrivate() ? u":/forms/lock-closed.svg"_s : u":/forms/lock-open.svg"_s,
         wordsOf(server, privacy));
}

void LineLock::showNoLine()
{
    show({}, {});
}

void LineLock::show(const QString& drawing, const QString& words)
{
    m_drawing = drawing;
    setPlainToolTip(*this, words);
    setAccessibleName(words);
    update();
}

void LineLock::paintEvent(QPaintEvent*)
{
    if (!m_drawing.isEmpty())
        QPainter(this).drawPixmap(rect(), svgPixmap(m_drawing, size(), devicePixelRatioF()));
}
