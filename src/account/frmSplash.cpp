#include "account/frmSplash.h"

#include "controls/FormControls.h"
#include "controls/SvgPicture.h"

#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <array>

namespace {

using namespace Qt::StringLiterals;

constexpr int shownMilliseconds = 2000;
constexpr QSize formSize{480, 300};
constexpr int textWidth = 285;

struct Line
{
    QLatin1StringView name;
    QLatin1StringView text;
    double scale; // of the ordinary type size
    bool bold;
    QRgb color;
};

constexpr QRgb foam = qRgb(0xf7, 0xfb, 0xfd);
constexpr QRgb honey = qRgb(0xf8, 0xd8, 0x7a);

constexpr std::array<Line, 6> lines{{
    {"lblProduct"_L1, "Quill Harbor Messenger"_L1, 1.7, true, honey},
    {"lblVersion"_L1, "Version 1.0"_L1, 1.0, false, foam},
    {"lblFeature1"_L1, "One harbor, one room, good company"_L1, 1.1, false, foam},
    {"lblFeature2"_L1, "Private windows, smileys and colors"_L1, 1.0, false, foam},
    {"lblFeature3"_L1, "Buddies, nicknames of your own"_L1, 1.0, false, foam},
    {"lblFeature4"_L1, "Quick, small and quiet"_L1, 1.0, false, foam},
}};

} // namespace

frmSplash::frmSplash()
{
    setObjectName(u"frmSplash"_s);
    setWindowTitle(u"QuillHarbor Messenger"_s);
    setWindowFlags(Qt::SplashScreen);
    setEscape(Escape::IsNoKey); // what comes next waits for its end
    setFixedSize(formSize);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 28, formSize.width() - textWidth, 60);
    layout->setSpacing(4);
    for (const Line& line : lines) {
        QLabel* label = makeLabel(line.name, line.text, this);
        label->setWordWrap(true);
        QFont font = label->font();
        font.setPointSizeF(font.pointSizeF() * line.scale);
        font.setBold(line.bold);
        label->setFont(font);
        QPalette colors = label->palette();
        colors.setColor(QPalette::WindowText, QColor::fromRgb(line.color));
        label->setPalette(colors);
        layout->addWidget(label);
    }
    layout->addStretch(1);
    Timer1.setSingleShot(true);
    connect(&Timer1, &QTimer::timeout, this, &frmSplash::finished);
}

void frmSplash::Form_Load()
{
    move(screen()->geometry().center() - rect().center());
    Timer1.start(shownMilliseconds);
}

void frmSplash::paintEvent(QPaintEvent*)
{
    QPainter(this).drawPixmap(rect(),
                              svgPixmap(u":/forms/splash.svg"_s, size(), devicePixelRatioF()));
}
