#include "desktop/WebToolBar.h"

#include "controls/SvgPicture.h"
#include "desktop/WebBrowser.h"
#include "platform/Handlers.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QToolButton>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize iconSize(24, 24);

struct Button
{
    QLatin1StringView key;
    void (WebBrowser::*command)();
};

constexpr std::array<Button, 6> buttons{{
    {"Back"_L1, &WebBrowser::GoBack},
    {"Forward"_L1, &WebBrowser::GoForward},
    {"Stop"_L1, &WebBrowser::Stop},
    {"Refresh"_L1, &WebBrowser::Refresh},
    {"Home"_L1, &WebBrowser::GoHome},
    {"Search"_L1, &WebBrowser::GoSearch},
}};

QIcon toolIcon(QLatin1StringView key)
{
    const QString picture = QString(":/icons/"_L1 + QString(key).toLower() + ".svg"_L1);
    QIcon icon;
    for (const qreal ratio : {1.0, 2.0})
        icon.addPixmap(svgPixmap(picture, iconSize, ratio));
    return icon;
}

// Enter presses it as Space does.
class ToolButton final : public QToolButton
{
public:
    using QToolButton::QToolButton;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QToolButton::keyPressEvent(event);
    }
};

} // namespace

WebToolBar::WebToolBar(const Handlers& handlers, WebBrowser& browser)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    for (const Button& button : buttons) {
        auto* tool = new ToolButton;
        tool->setObjectName(button.key);
        tool->setText(button.key);
        tool->setAccessibleName(button.key);
        tool->setIcon(toolIcon(button.key));
        tool->setIconSize(iconSize);
        tool->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        tool->setAutoRaise(true);
        tool->setFocusPolicy(Qt::StrongFocus);
        layout->addWidget(tool);
        // What a browser cannot do, as at the end of its history, it leaves undone.
        handlers.connect(tool, &QToolButton::clicked, this, [&browser, command = button.command] {
            skipRest([&] { (browser.*command)(); });
        });
    }
    layout->addStretch(1);
}
