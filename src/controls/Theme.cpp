#include "controls/Theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace {

using namespace Qt::StringLiterals;

struct Named
{
    QLatin1StringView name;
    QLatin1StringView value;
};

// The same names and values as the drawings use.
constexpr Named colors[]{
    {"@ink"_L1, "#0d2135"_L1},   {"@navy"_L1, "#16324f"_L1},  {"@deep"_L1, "#1f4f7a"_L1},
    {"@sea"_L1, "#2f72a3"_L1},   {"@tide"_L1, "#5f9fc6"_L1},  {"@shoal"_L1, "#97c3dc"_L1},
    {"@mist"_L1, "#cfe3ee"_L1},  {"@haze"_L1, "#e6f0f5"_L1},  {"@foam"_L1, "#f6fafc"_L1},
    {"@white"_L1, "#ffffff"_L1}, {"@slate"_L1, "#5b7083"_L1}, {"@stone"_L1, "#8ba0b0"_L1},
    {"@shell"_L1, "#dfe5e9"_L1},
};

// No colour of text for input lines: theirs is the user's own.
constexpr auto styleSheet = R"(
QLineEdit, QListWidget, QTreeWidget, QTextEdit, QPlainTextEdit, ChatView {
    background: @white; border: 1px solid @shoal; border-radius: 6px;
}
QLineEdit { padding: 4px 8px; }
QLineEdit:focus, QListWidget:focus, QTreeWidget:focus { border: 1px solid @sea; }
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
QMenuBar { background: @foam; border-bottom: 1px solid @mist; }
QMenuBar::item { padding: 4px 10px; background: transparent; border-radius: 4px; }
QMenuBar::item:selected { background: @mist; }
QMenu { background: @white; border: 1px solid @shoal; padding: 4px; }
QMenu::item { padding: 5px 28px 5px 24px; border-radius: 4px; }
QMenu::item:selected { background: @mist; color: @ink; }
QMenu::item:disabled { color: @stone; }
QMenu::separator { height: 1px; background: @mist; margin: 4px 8px; }
QTabBar::tab {
    padding: 6px 18px; margin-right: 2px; color: @slate; background: transparent;
    border: 0; border-bottom: 2px solid transparent;
}
QTabBar::tab:selected { color: @navy; border-bottom: 2px solid @sea; font-weight: bold; }
QTabBar::tab:hover { color: @navy; border-bottom: 2px solid @shoal; }
QTabBar::tab:focus { background: @haze; border-radius: 4px; }
QToolButton { border: 1px solid transparent; border-radius: 5px; padding: 3px 6px; }
QToolButton:hover { background: @haze; border-color: @mist; }
QToolButton:pressed { background: @mist; }
QToolButton:focus { border-color: @tide; }
QToolButton[link="true"] { color: @sea; }
QLabel[quiet="true"] { color: @slate; }
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

QColor color(QLatin1StringView name)
{
    for (const Named& row : colors) {
        if (row.name == name)
            return QColor(row.value);
    }
    return {};
}

QPalette palette()
{
    QPalette result(color("@foam"_L1));
    result.setColor(QPalette::Window, color("@foam"_L1));
    result.setColor(QPalette::Base, color("@white"_L1));
    result.setColor(QPalette::AlternateBase, color("@haze"_L1));
    result.setColor(QPalette::WindowText, color("@ink"_L1));
    result.setColor(QPalette::Text, color("@ink"_L1));
    result.setColor(QPalette::ButtonText, color("@ink"_L1));
    result.setColor(QPalette::PlaceholderText, color("@stone"_L1));
    result.setColor(QPalette::Highlight, color("@sea"_L1));
    result.setColor(QPalette::HighlightedText, color("@white"_L1));
    result.setColor(QPalette::Link, color("@sea"_L1));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        result.setColor(QPalette::Disabled, role, color("@stone"_L1));
    return result;
}

} // namespace

void applyTheme(QApplication& application)
{
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(palette());
    QString sheet = styleSheet;
    for (const Named& row : colors)
        sheet.replace(row.name, row.value);
    application.setStyleSheet(sheet);
    QIcon icon(u":/icons/quillharbor.svg"_s);
    icon.addFile(u":/icons/quillharbor-small.svg"_s, {32, 32});
    icon.addFile(u":/icons/quillharbor-small.svg"_s, {16, 16});
    QApplication::setWindowIcon(icon);
}
