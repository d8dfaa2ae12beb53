#include "controls/Theme.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QStyleFactory>

#include <algorithm>
#include <array>

namespace {

using namespace Qt::StringLiterals;

struct Named
{
    QLatin1StringView name;
    QLatin1StringView value;
};

// The same names and values as the drawings use. They paint what is paper: text views, lists, input
// lines, which stay light in every scheme.
constexpr Named paperColors[]{
    {"@ink"_L1, "#0d2135"_L1},   {"@navy"_L1, "#16324f"_L1},  {"@deep"_L1, "#1f4f7a"_L1},
    {"@sea"_L1, "#2f72a3"_L1},   {"@tide"_L1, "#5f9fc6"_L1},  {"@shoal"_L1, "#97c3dc"_L1},
    {"@mist"_L1, "#cfe3ee"_L1},  {"@haze"_L1, "#e6f0f5"_L1},  {"@foam"_L1, "#f6fafc"_L1},
    {"@white"_L1, "#ffffff"_L1}, {"@slate"_L1, "#5b7083"_L1}, {"@stone"_L1, "#8ba0b0"_L1},
};

// The frame around the paper: a name, and its value in each scheme.
struct FrameColor
{
    QLatin1StringView name;
    std::array<QLatin1StringView, 4> values; // light, dark, light and dark in high contrast
};
constexpr FrameColor frameColors[]{
    {"@ground"_L1, {"#f6fafc"_L1, "#14202b"_L1, "#ffffff"_L1, "#000000"_L1}},
    {"@raised"_L1, {"#ffffff"_L1, "#1d2d3b"_L1, "#ffffff"_L1, "#000000"_L1}},
    {"@hover"_L1, {"#e6f0f5"_L1, "#24394a"_L1, "#cfe3ee"_L1, "#003a66"_L1}},
    {"@chosen"_L1, {"#cfe3ee"_L1, "#2d485d"_L1, "#cfe3ee"_L1, "#00508c"_L1}},
    {"@edge"_L1, {"#cfe3ee"_L1, "#2d485d"_L1, "#000000"_L1, "#ffffff"_L1}},
    {"@outline"_L1, {"#97c3dc"_L1, "#3d5f79"_L1, "#000000"_L1, "#ffffff"_L1}},
    {"@focus"_L1, {"#2f72a3"_L1, "#8fc1e3"_L1, "#000000"_L1, "#ffffff"_L1}},
    {"@word"_L1, {"#0d2135"_L1, "#e6f0f5"_L1, "#000000"_L1, "#ffffff"_L1}},
    {"@strong"_L1, {"#16324f"_L1, "#ffffff"_L1, "#000000"_L1, "#ffffff"_L1}},
    {"@quiet"_L1, {"#5b7083"_L1, "#a9bccb"_L1, "#000000"_L1, "#ffffff"_L1}},
    {"@faint"_L1, {"#8ba0b0"_L1, "#6f8596"_L1, "#5b7083"_L1, "#b0b0b0"_L1}},
    {"@wrong"_L1, {"#b9503f"_L1, "#f6bfa9"_L1, "#8a0000"_L1, "#ffb3a0"_L1}},
    {"@link"_L1, {"#2f72a3"_L1, "#8fc1e3"_L1, "#00406e"_L1, "#9fd6ff"_L1}},
};

// No colour of text for input lines: theirs is the user's own.
constexpr auto styleSheet = R"(
QLineEdit, QListWidget, QTreeWidget, QTextEdit, QPlainTextEdit, ChatView {
    background: @white; border: 1px solid @outline; border-radius: 6px;
}
QLineEdit { padding: 4px 8px; }
QLineEdit:focus, QListWidget:focus, QTreeWidget:focus { border: 1px solid @focus; }
QLineEdit:disabled, QLineEdit:read-only { background: @haze; }
QListWidget { padding: 4px; outline: 0; }
QListWidget::item { padding: 3px 6px; border-radius: 4px; }
QListWidget::item:selected { background: @sea; color: @white; }
QListWidget::item:selected:!active { background: @mist; color: @ink; }
QTreeWidget { padding: 1px; outline: 0; }
QTreeWidget::item { padding: 3px 4px; }
QTreeWidget::item:selected { background: @sea; color: @white; }
QTreeWidget::item:selected:!active { background: @mist; color: @ink; }
QHeaderView { background: transparent; border: 0; }
QHeaderView::section {
    background: @haze; color: @navy; padding: 5px 7px; border: 0; border-bottom: 1px solid @mist;
}
QListWidget:disabled { background: @haze; color: @stone; }
QMenuBar { background: @ground; color: @word; border-bottom: 1px solid @edge; }
QMenuBar::item { padding: 4px 10px; background: transparent; border-radius: 4px; }
QMenuBar::item:selected { background: @chosen; }
QMenu { background: @raised; color: @word; border: 1px solid @outline; padding: 4px; }
QMenu::item { padding: 5px 28px 5px 24px; border-radius: 4px; }
QMenu::item:selected { background: @chosen; color: @word; }
QMenu::item:disabled { color: @faint; }
QMenu::separator { height: 1px; background: @edge; margin: 4px 8px; }
QTabBar::tab {
    padding: 6px 18px; margin-right: 2px; color: @quiet; background: transparent;
    border: 0; border-bottom: 2px solid transparent;
}
QTabBar::tab:selected { color: @strong; border-bottom: 2px solid @focus; font-weight: bold; }
QTabBar::tab:hover { color: @strong; border-bottom: 2px solid @outline; }
QTabBar::tab:focus { background: @hover; border-radius: 4px; }
QToolButton { color: @word; border: 1px solid transparent; border-radius: 5px; padding: 3px 6px; }
QToolButton:hover { background: @hover; border-color: @edge; }
QToolButton:pressed { background: @chosen; }
QToolButton:focus { border-color: @focus; }
QToolButton:disabled { color: @faint; }
QToolButton[link="true"] { color: @link; }
QLabel[quiet="true"] { color: @quiet; }
QLabel[wrong="true"] { color: @wrong; }
QToolButton[link="true"]:disabled { color: @faint; }
QToolTip { background: @foam; color: @ink; border: 1px solid @shoal; padding: 3px 5px; }
QScrollBar:vertical { background: transparent; width: 12px; margin: 2px; }
QScrollBar:horizontal { background: transparent; height: 12px; margin: 2px; }
QScrollBar::handle { background: @mist; border-radius: 4px; }
QScrollBar::handle:vertical { min-height: 28px; }
QScrollBar::handle:horizontal { min-width: 28px; }
QScrollBar::handle:disabled { background: transparent; }
QScrollBar::handle:hover { background: @shoal; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QSplitter::handle { background: transparent; width: 8px; }
)"_L1;

// Boxes that wait for an answer, with buttons that look like those of the forms.
constexpr auto boxSheet = R"(
* {
    dialogbuttonbox-buttons-have-icons: 0;
    messagebox-question-icon: url(":/icons/box-question.svg");
    messagebox-warning-icon: url(":/icons/box-exclamation.svg");
    messagebox-critical-icon: url(":/icons/box-critical.svg");
}
QDialog { min-width: 320px; }
QMessageBox QLabel#qt_msgbox_label { padding: 4px 8px 8px 4px; }
QDialog QPushButton {
    background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 @white, stop: 1 @mist);
    color: @ink; border: 1px solid @tide; border-radius: 5px; min-width: 58px; padding: 5px 10px;
}
QDialog QPushButton:hover, QDialog QPushButton:focus { border-color: @deep; }
QDialog QPushButton:hover {
    background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 @white, stop: 1 @shoal);
}
QDialog QPushButton:pressed { background: @shoal; }
)"_L1;

QColor paper(QLatin1StringView name)
{
    const auto* row = std::find_if(std::begin(paperColors), std::end(paperColors),
                                   [&](const Named& one) { return one.name == name; });
    return QColor(row->value);
}

QColor frame(QLatin1StringView name, std::size_t scheme)
{
    const auto* row = std::find_if(std::begin(frameColors), std::end(frameColors),
                                   [&](const FrameColor& one) { return one.name == name; });
    return QColor(row->values[scheme]);
}

constexpr std::size_t firstPureScheme = 2; // of high contrast

// What the desktop wants, told by its palette: a dark frame, and black and white at their purest.
std::size_t schemeOf(const QPalette& desktop)
{
    const QColor ground = desktop.color(QPalette::Window);
    const QColor word = desktop.color(QPalette::WindowText);
    const bool isDark = ground.lightness() < word.lightness();
    const bool isPure = std::abs(ground.lightness() - word.lightness()) == 255;
    return (isPure ? firstPureScheme : 0U) + (isDark ? 1U : 0U);
}

QPalette palette(std::size_t scheme)
{
    QPalette result(frame("@ground"_L1, scheme));
    result.setColor(QPalette::Window, frame("@ground"_L1, scheme));
    result.setColor(QPalette::WindowText, frame("@word"_L1, scheme));
    result.setColor(QPalette::Base, paper("@white"_L1));
    result.setColor(QPalette::AlternateBase, paper("@haze"_L1));
    result.setColor(QPalette::Text, paper("@ink"_L1));
    result.setColor(QPalette::ButtonText, frame("@word"_L1, scheme));
    result.setColor(QPalette::PlaceholderText, paper("@slate"_L1));
    result.setColor(QPalette::Highlight, paper("@sea"_L1));
    result.setColor(QPalette::HighlightedText, paper("@white"_L1));
    result.setColor(QPalette::Link, frame("@link"_L1, scheme));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText})
        result.setColor(QPalette::Disabled, role, frame("@faint"_L1, scheme));
    result.setColor(QPalette::Disabled, QPalette::Text, paper("@stone"_L1));
    return result;
}

// The toolkit makes the edges of these a shade darker than the window, which nobody sees on black
// and hardly anybody on white.
void drawEdges(QPalette palette)
{
    palette.setColor(QPalette::Window, palette.color(QPalette::WindowText));
    for (const char* control : {"QComboBox", "QCheckBox"})
        QApplication::setPalette(palette, control);
}

} // namespace

void applyTheme(QApplication& application)
{
    const std::size_t scheme = schemeOf(QApplication::palette());
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(palette(scheme));
    if (scheme >= firstPureScheme)
        drawEdges(palette(scheme));
    QString sheet = QString(styleSheet) + boxSheet;
    for (const Named& row : paperColors)
        sheet.replace(row.name, row.value);
    for (const FrameColor& row : frameColors)
        sheet.replace(row.name, row.values[scheme]);
    application.setStyleSheet(sheet);
    QIcon icon(u":/icons/quillharbor.svg"_s);
    icon.addFile(u":/icons/quillharbor-small.svg"_s, {32, 32});
    icon.addFile(u":/icons/quillharbor-small.svg"_s, {16, 16});
    QApplication::setWindowIcon(icon);
}
