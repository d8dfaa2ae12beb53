#include "web/EngineModule.h"

#include <QContextMenuEvent>
#include <QLoggingCategory>
#include <QMenu>
#include <QPointer>
#include <QQuickWindow>
#include <QTimer>
#include <QWebEngineDownloadRequest>
#include <QWebEngineLoadingInfo>
#include <QWebEngineNewWindowRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

constexpr int nameNotResolved = -105;

bool isWebAddress(const QUrl& url)
{
    return url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
}

// The engine's own words are meant for developers.
QString reasonOf(const QWebEngineLoadingInfo& info)
{
    switch (info.errorDomain()) {
    case QWebEngineLoadingInfo::ConnectionErrorDomain:
        return info.errorCode() == nameNotResolved ? u"No server of this name was found."_s
                                                   : u"The server does not answer."_s;
    case QWebEngineLoadingInfo::DnsErrorDomain:
        return u"No server of this name was found."_s;
    case QWebEngineLoadingInfo::CertificateErrorDomain:
        return u"The server could not prove that it is the right one."_s;
    case QWebEngineLoadingInfo::HttpStatusCodeDomain:
        return QStringLiteral("The server answered with error %1.").arg(info.errorCode());
    case QWebEngineLoadingInfo::NoErrorDomain:
    case QWebEngineLoadingInfo::InternalErrorDomain:
    case QWebEngineLoadingInfo::HttpErrorDomain:
    case QWebEngineLoadingInfo::FtpErrorDomain:
        break;
    }
    return {};
}

// What every page may and may not do.
void restrict(QWebEngineSettings& settings)
{
    for (const auto refused :
         {QWebEngineSettings::LocalContentCanAccessRemoteUrls,
          QWebEngineSettings::LocalContentCanAccessFileUrls, QWebEngineSettings::PluginsEnabled,
          QWebEngineSettings::PdfViewerEnabled, QWebEngineSettings::FullScreenSupportEnabled,
          QWebEngineSettings::ScreenCaptureEnabled, QWebEngineSettings::WebGLEnabled,
          QWebEngineSettings::JavascriptCanAccessClipboard,
          QWebEngineSettings::ErrorPageEnabled, // the tab has words of its own
          QWebEngineSettings::HyperlinkAuditingEnabled, QWebEngineSettings::NavigateOnDropEnabled})
        settings.setAttribute(refused, false);
    settings.setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, true);
    settings.setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
}

class Page final : public QWebEnginePage
{
public:
    explicit Page(QWebEngineProfile* profile)
        : QWebEnginePage(profile)
    {
        connect(this, &QWebEnginePage::newWindowRequested, this,
                [this](const QWebEngineNewWindowRequest& request) {
                    if (isWebAddress(request.requestedUrl()))
                        setUrl(request.requestedUrl());
                });
        connect(this, &QWebEnginePage::featurePermissionRequested, this,
                [this](const QUrl& origin, Feature feature) {
                    setFeaturePermission(origin, feature, PermissionDeniedByUser);
                });
    }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType, bool) override
    {
        return isWebAddress(url) || url == QUrl(u"about:blank"_s);
    }

    // A page in a tab puts no box in front of the chat, and gets no file.
    void javaScriptAlert(const QUrl&, const QString&) override {}
    bool javaScriptConfirm(const QUrl&, const QString&) override { return false; }
    bool javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) override
    {
        return false;
    }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int,
                                  const QString&) override
    {
    }
    QStringList chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) override
    {
        return {};
    }
};

class View final : public QWebEngineView
{
public:
    using QWebEngineView::QWebEngineView;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override
    {
        auto* menu = new QMenu(this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        for (const auto action : {QWebEnginePage::Back, QWebEnginePage::Forward,
                                  QWebEnginePage::Reload, QWebEnginePage::Copy})
            menu->addAction(pageAction(action));
        menu->popup(event->globalPos());
    }
};

class EngineView final : public WebView
{
public:
    EngineView(std::shared_ptr<QWebEngineProfile> profile, QWidget* parent,
               WebViewListener& listener, std::chrono::milliseconds discardAfter)
        : m_profile(std::move(profile))
        , m_page(std::make_unique<Page>(m_profile.get()))
        , m_view(new View(parent))
        , m_listener(listener)
    {
        m_discard.setSingleShot(true);
        m_discard.setInterval(discardAfter);
        m_view->setPage(m_page.get());

        QObject::connect(m_page.get(), &QWebEnginePage::loadingChanged, &m_discard,
                         [this](const QWebEngineLoadingInfo& info) { tell(info); });
        QObject::connect(m_page.get(), &QWebEnginePage::renderProcessTerminated, &m_discard,
                         [this](QWebEnginePage::RenderProcessTerminationStatus status) {
                             if (status != QWebEnginePage::NormalTerminationStatus)
                                 m_listener.failed(m_page->requestedUrl(),
                                                   u"The page has stopped working."_s);
                         });
        QObject::connect(m_page.get(), &QWebEnginePage::recommendedStateChanged, &m_discard,
                         [this] { followRecommendation(); });
        QObject::connect(&m_discard, &QTimer::timeout, &m_discard, [this] {
            if (m_page->recommendedState() == QWebEnginePage::LifecycleState::Discarded)
                m_page->setLifecycleState(QWebEnginePage::LifecycleState::Discarded);
        });
    }
    Q_DISABLE_COPY_MOVE(EngineView)
    ~EngineView() override
    {
        m_page->disconnect(&m_discard);
        delete m_view; // before its page, and the page before the profile
    }

    QWidget* widget() override { return m_view; }
    void load(const QUrl& address) override { m_page->load(address); }
    void back() override { m_page->triggerAction(QWebEnginePage::Back); }
    void forward() override { m_page->triggerAction(QWebEnginePage::Forward); }
    void reload() override { m_page->triggerAction(QWebEnginePage::Reload); }
    void stop() override { m_page->triggerAction(QWebEnginePage::Stop); }

private:
    void tell(const QWebEngineLoadingInfo& info)
    {
        switch (info.status()) {
        case QWebEngineLoadingInfo::LoadStartedStatus:
            m_listener.started();
            break;
        case QWebEngineLoadingInfo::LoadFailedStatus:
            m_listener.failed(info.url(), reasonOf(info));
            break;
        case QWebEngineLoadingInfo::LoadStoppedStatus:
        case QWebEngineLoadingInfo::LoadSucceededStatus:
            m_listener.finished();
            break;
        }
    }

    // The engine knows when a page could be put to sleep: not while it is seen, heard or loading.
    void followRecommendation()
    {
        using State = QWebEnginePage::LifecycleState;
        if (m_page->recommendedState() == State::Active) {
            m_discard.stop();
            m_page->setLifecycleState(State::Active);
            return;
        }
        if (m_page->lifecycleState() == State::Active)
            m_page->setLifecycleState(State::Frozen);
        if (!m_discard.isActive())
            m_discard.start();
    }

    std::shared_ptr<QWebEngineProfile> m_profile;
    std::unique_ptr<Page> m_page;
    QPointer<View> m_view;
    WebViewListener& m_listener;
    QTimer m_discard;
};

} // namespace

EngineModule::EngineModule()
{
    QLoggingCategory::setFilterRules(u"qt.webenginecontext.info=false"_s); // a page of it
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

std::unique_ptr<WebView> EngineModule::create(QWidget* parent, WebViewListener& listener,
                                              std::chrono::milliseconds discardAfter)
{
    std::shared_ptr<QWebEngineProfile> profile = m_profile.lock();
    if (!profile) {
        // Without a name it keeps nothing on disk. It goes with the last view.
        profile = std::make_shared<QWebEngineProfile>();
        restrict(*profile->settings());
        connect(profile.get(), &QWebEngineProfile::downloadRequested, profile.get(),
                [](QWebEngineDownloadRequest* download) { download->cancel(); });
        m_profile = profile;
    }
    return std::make_unique<EngineView>(std::move(profile), parent, listener, discardAfter);
}
