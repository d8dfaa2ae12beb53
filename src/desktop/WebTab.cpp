#include "desktop/WebTab.h"

#include "controls/FormControls.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"

#include <QEvent>
#include <QLabel>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr double headingScale = 1.3; // of ordinary text

} // namespace

WebTab::WebTab(const Handlers& handlers, AskEngine askEngine, Pages pages,
               std::chrono::milliseconds discardAfter)
    : m_askEngine(std::move(askEngine))
    , m_pages(std::move(pages))
    , m_discardAfter(discardAfter)
    , m_layout(new QStackedLayout(this))
    , m_notice(new QWidget)
    , m_noticeTitle(makeHeading(makeLabel(u"lblNoticeTitle"_s), headingScale))
    , m_noticeText(makeLabel(u"lblNotice"_s))
    , cmdRetry(new xpButton(u"Try again"_s, xpButton::Long))
{
    cmdRetry->setObjectName("cmdRetry"_L1);
    cmdRetry->setAccessibleName(u"Try again to load the page"_s);

    auto* lines = new QVBoxLayout(m_notice);
    setFormMargins(lines);
    lines->addStretch(1);
    for (QLabel* label : {m_noticeTitle, m_noticeText}) {
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignCenter);
        lines->addWidget(label);
    }
    lines->addSpacing(formSpacing);
    lines->addWidget(cmdRetry, 0, Qt::AlignHCenter);
    lines->addStretch(2);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_notice);
    showNotice(u"Nothing here yet"_s, u"This page opens when you are connected."_s, false);

    m_notice->installEventFilter(this);
    new ButtonKeys(m_notice);
    handlers.connect(cmdRetry, &xpButton::Click, this, [this] { Refresh(); });
}

WebTab::~WebTab() = default;

void WebTab::Navigate(const QString& address)
{
    const QUrl url(address);
    if (url.isValid() && (url.scheme() == "http"_L1 || url.scheme() == "https"_L1))
        load(url);
}

void WebTab::load(const QUrl& address)
{
    if (m_view) {
        m_view->load(address);
    } else if (!m_asked) {
        m_failedAddress.clear();
        m_waiting = address;
        showNotice(u"Loading"_s, address.toDisplayString(), false);
        m_notice->update();
    }
}

// The engine takes a moment to come. That it is coming stands on the screen before.
bool WebTab::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_notice && event->type() == QEvent::Paint && !m_waiting.isEmpty())
        QMetaObject::invokeMethod(this, &WebTab::loadWaiting, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

void WebTab::loadWaiting()
{
    if (m_waiting.isEmpty() || !isVisible())
        return;
    const QUrl address = std::exchange(m_waiting, {});
    m_asked = true;
    const WebModule::Answer answer = m_askEngine();
    if (!answer.engine) {
        showNotice(u"No web page today"_s, answer.reason, false);
        Q_EMIT engineMissing();
        return;
    }
    m_view = answer.engine->create(this, *this, m_discardAfter);
    m_layout->addWidget(m_view->widget());
    m_view->load(address);
}

void WebTab::GoBack()
{
    if (m_view)
        m_view->back();
}

void WebTab::GoForward()
{
    if (m_view)
        m_view->forward();
}

void WebTab::GoHome()
{
    Navigate(m_pages.own);
}

void WebTab::GoSearch()
{
    Navigate(m_pages.search);
}

void WebTab::Refresh()
{
    if (!m_failedAddress.isEmpty())
        load(m_failedAddress);
    else if (m_view)
        m_view->reload();
}

void WebTab::Stop()
{
    if (m_view)
        m_view->stop();
    else if (!m_waiting.isEmpty())
        failed(std::exchange(m_waiting, {}), u"Loading was stopped."_s);
}

void WebTab::started()
{
    m_failedAddress.clear();
    m_layout->setCurrentWidget(m_view->widget());
}

void WebTab::finished() {}

void WebTab::failed(const QUrl& address, const QString& reason)
{
    m_failedAddress = address;
    showNotice(u"This page did not load"_s,
               reason.isEmpty() ? address.toDisplayString()
                                : QString(reason + u'\n' + address.toDisplayString()),
               true);
}

void WebTab::showNotice(const QString& title, const QString& text, bool retry)
{
    m_noticeTitle->setText(title);
    m_noticeText->setText(text);
    cmdRetry->setVisible(retry);
    m_layout->setCurrentWidget(m_notice);
}
