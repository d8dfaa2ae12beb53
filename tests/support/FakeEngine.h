#pragma once

#include "desktop/WebEngine.h"

#include <QtWidgets>

// A web engine that writes down what its pages are asked to do.

class FakeView final : public WebView
{
public:
    FakeView(QWidget* parent, WebViewListener& listener, QStringList& calls)
        : listener(listener)
        , m_calls(calls)
        , m_widget(new QWidget(parent))
    {
        m_widget->setObjectName(QLatin1StringView("page"));
    }
    ~FakeView() override { delete m_widget; }

    QWidget* widget() override { return m_widget; }
    void load(const QUrl& address) override
    {
        m_calls += QString(QLatin1StringView("load ") + address.toString());
        listener.started();
    }
    void back() override { m_calls += QStringLiteral("back"); }
    void forward() override { m_calls += QStringLiteral("forward"); }
    void reload() override { m_calls += QStringLiteral("reload"); }
    void stop() override { m_calls += QStringLiteral("stop"); }

    WebViewListener& listener;

private:
    QStringList& m_calls;
    QPointer<QWidget> m_widget;
};

struct FakeEngine final : WebEngine
{
    std::unique_ptr<WebView> create(QWidget* parent, WebViewListener& listener,
                                    std::chrono::milliseconds) override
    {
        auto made = std::make_unique<FakeView>(parent, listener, calls);
        view = made.get();
        return made;
    }

    QStringList calls;
    FakeView* view = nullptr;
};
