#include "desktop/Author.h"

#include "controls/FormControls.h"
#include "desktop/WebAddresses.h"
#include "platform/Handlers.h"

#include <QGridLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr double titleScale = 1.4; // of ordinary text

struct Row
{
    QLatin1StringView task;
    QLatin1StringView name;
};

constexpr std::array<Row, 4> rows{{
    {"Made by"_L1, "the Quill Harbor crew"_L1},
    {"At the helm"_L1, "the harbour keepers"_L1},
    {"Pictures and sound"_L1, "the lighthouse painters"_L1},
    {"Tried and shaken"_L1, "the sailors of #Harbor"_L1},
}};

} // namespace

Author::Author(const Handlers& handlers, OpenLink openLink)
{
    setObjectName("Author"_L1);
    setWindowTitle(u"About Quill Harbor Messenger Author/Creator"_s);

    auto* layout = new QGridLayout(this);
    setFormLayout(layout);
    layout->setHorizontalSpacing(2 * formSpacing);

    int number = 1;
    const auto nextLabel = [&](const QString& text) {
        return makeLabel(u"Label%1"_s.arg(number++), text, this);
    };
    layout->addWidget(makeHeading(nextLabel(u"Quill Harbor Messenger"_s), titleScale), 0, 0, 1, 2);
    for (const Row& row : rows) {
        const int line = layout->rowCount();
        QLabel* task = nextLabel(row.task);
        task->setProperty("quiet", true);
        layout->addWidget(task, line, 0);
        layout->addWidget(nextLabel(row.name), line, 1);
    }

    auto* Label10 = new QLabel(this);
    Label10->setObjectName("Label10"_L1);
    Label10->setTextFormat(Qt::RichText); // the one label that is a link, and the text is ours
    Label10->setText(u"<a href=\"#\">Visit the crew on their page</a>"_s);
    Label10->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    Label10->setFocusPolicy(Qt::StrongFocus);
    Label10->setAccessibleName(u"Visit the crew on their page"_s);
    layout->addWidget(Label10, layout->rowCount(), 0, 1, 2);
    handlers.connect(Label10, &QLabel::linkActivated, this,
                     [openLink = std::move(openLink)] { openLink(web_addresses::author()); });
}
