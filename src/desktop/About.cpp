#include "desktop/About.h"

#include "controls/FormControls.h"
#include "controls/SvgPicture.h"

#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr double titleScale = 1.4; // of ordinary text

constexpr std::array paragraphs{
    "A small chat client for one network and its one room. Sign in, talk, whisper, and keep an "
    "eye on your buddies."_L1,
    "Written and drawn by the Quill Harbor crew: the keepers who wrote it, the sailors who tried "
    "it in all weathers, and the artist of the harbour cat."_L1,
    "It comes without any warranty. Fair winds!"_L1,
};

} // namespace

About::About()
{
    setObjectName("About"_L1);
    setWindowTitle(u"About QuillHarbor Alpha 1.0a"_s);

    auto* layout = new QVBoxLayout(this);
    setFormLayout(layout);

    auto* picture = new SvgPicture(u":/forms/about.svg"_s, this);
    picture->setObjectName("Picture1"_L1);
    picture->setAccessibleName(u"A boat under a quill sail comes home to the harbour"_s);
    picture->setFixedSize(picture->sizeHint());
    layout->addWidget(picture);

    const auto addLabel = [&](const QString& name, const QString& text) {
        QLabel* label = makeLabel(name, text, this);
        label->setWordWrap(true);
        label->setFixedWidth(picture->width());
        layout->addWidget(label);
        return label;
    };
    makeHeading(addLabel(u"Label1"_s, u"QuillHarbor Messenger 1.0"_s), titleScale);
    int number = 2;
    for (const auto& paragraph : paragraphs)
        addLabel(QStringLiteral("Label%1").arg(number++), paragraph);
}
