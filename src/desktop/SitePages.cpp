#include "desktop/SitePages.h"

#include "desktop/Channel.h"
#include "desktop/WebAddresses.h"
#include "desktop/WebToolBar.h"

#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

QWidget* page(const Handlers& handlers, const QString& toolBar, WebTab* tab)
{
    auto* widget = new QWidget;
    auto* layout = new QVBoxLayout(widget);
    auto* bar = new WebToolBar(handlers, *tab);
    bar->setObjectName(toolBar);
    QObject::connect(tab, &WebTab::engineMissing, bar, [bar] { bar->setEnabled(false); });
    layout->addWidget(bar);
    layout->addWidget(tab, 1);
    return widget;
}

} // namespace

SitePages::SitePages(const Handlers& handlers, const WebTab::AskEngine& askEngine, Channel& window)
    : m_home(new WebTab(handlers, askEngine,
                        {.own = web_addresses::home(), .search = web_addresses::search()}))
    , m_misc(new WebTab(handlers, askEngine,
                        {.own = web_addresses::misc(), .search = web_addresses::search()}))
{
    m_home->setObjectName(u"Home"_s);
    m_misc->setObjectName(u"Misc"_s);
    window.setWebPages(page(handlers, u"ToolBar1"_s, m_home),
                       page(handlers, u"Toolbar2"_s, m_misc));
}

void SitePages::navigateHome(const QString& path)
{
    m_home->Navigate(web_addresses::onHost(path));
}

void SitePages::navigateMisc(const QString& path)
{
    m_misc->Navigate(web_addresses::onHost(path));
}
