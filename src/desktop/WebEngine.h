#pragma once

#include <QUrl>
#include <QtPlugin>

#include <chrono>
#include <memory>

class QWidget;

// What a web view tells of its page.
class WebViewListener
{
public:
    virtual ~WebViewListener() = default;

    virtual void started() = 0;
    virtual void finished() = 0; // loaded or stopped
    virtual void failed(const QUrl& address, const QString& reason) = 0;
};

// One page of the web engine and the widget that shows it.
class WebView
{
public:
    virtual ~WebView() = default; // takes the widget along

    virtual QWidget* widget() = 0;
    virtual void load(const QUrl& address) = 0;
    virtual void back() = 0;
    virtual void forward() = 0;
    virtual void reload() = 0;
    virtual void stop() = 0;
};

// The engine. It shows pages of the web and nothing else: what they ask of the machine is refused,
// and what they leave behind is gone at exit. A page that is out of sight sleeps at once and gives
// its memory back when it has been so for a while; it comes again when it is looked at.
class WebEngine
{
public:
    virtual ~WebEngine() = default;

    virtual std::unique_ptr<WebView> create(QWidget* parent, WebViewListener& listener,
                                            std::chrono::milliseconds discardAfter) = 0;
};

#define QH_WebEngine_iid "quillharbor.WebEngine/1"
Q_DECLARE_INTERFACE(WebEngine, QH_WebEngine_iid)
