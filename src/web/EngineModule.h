#pragma once

#include "desktop/WebEngine.h"

#include <QObject>

class QWebEngineProfile;

// The toolkit's web engine, as the module that the program loads.
class EngineModule final : public QObject, public WebEngine
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QH_WebEngine_iid)
    Q_INTERFACES(WebEngine)

public:
    EngineModule();

    std::unique_ptr<WebView> create(QWidget* parent, WebViewListener& listener,
                                    std::chrono::milliseconds discardAfter) override;

private:
    std::weak_ptr<QWebEngineProfile> m_profile;
};
