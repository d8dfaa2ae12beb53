#pragma once

#include "desktop/WebBrowser.h"
#include "desktop/WebEngine.h"
#include "desktop/WebModule.h"

#include <QUrl>
#include <QWidget>

#include <functional>

class Handlers;
class QLabel;
class QStackedLayout;
class xpButton;

// A tab's web page. The address it was given last waits until the tab is first in sight, and the
// engine comes with it: who never looks at a page does not pay for one. From then on addresses are
// loaded as they come. Where there is no engine, or a page does not load, the tab says so.
class WebTab final : public QWidget, public WebBrowser, private WebViewListener
{
    Q_OBJECT
public:
    // Asked once, when there is a first page to show.
    using AskEngine = std::function<WebModule::Answer()>;

    struct Pages
    {
        QString own;
        QString search;
    };

    static constexpr std::chrono::milliseconds usualDiscardAfter = std::chrono::minutes(1);

    WebTab(const Handlers& handlers, AskEngine askEngine, Pages pages,
           std::chrono::milliseconds discardAfter = usualDiscardAfter);
    ~WebTab() override;

    void Navigate(const QString& address) override; // anything but http and https is dropped
    void GoBack() override;
    void GoForward() override;
    void GoHome() override;
    void GoSearch() override;
    void Refresh() override;
    void Stop() override;

Q_SIGNALS:
    // There is nothing to show pages with, and there will be nothing until the next start.
    void engineMissing();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void started() override;
    void finished() override;
    void failed(const QUrl& address, const QString& reason) override;

    void load(const QUrl& address);
    void loadWaiting();
    void showNotice(const QString& title, const QString& text, bool retry);

    AskEngine m_askEngine;
    Pages m_pages;
    std::chrono::milliseconds m_discardAfter;
    bool m_asked = false;
    std::unique_ptr<WebView> m_view;
    QUrl m_waiting;       // empty unless a page waits to be seen
    QUrl m_failedAddress; // empty unless the notice of a failure stands

    QStackedLayout* m_layout;
    QWidget* m_notice;
    QLabel* m_noticeTitle;
    QLabel* m_noticeText;
    xpButton* cmdRetry;
};
