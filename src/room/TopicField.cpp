#include "room/TopicField.h"

#include "common/TextHelpers.h"
#include "controls/KeyCodes.h"
#include "room/Room.h"
#include "text/TextWriter.h"
#include "view/RichTextBox.h"
#include "wire/LineSink.h"

namespace {

using namespace Qt::StringLiterals;

constexpr auto lockedTag = "locked"_L1;

} // namespace

void TopicField::setLocked(RichTextBox& topic, bool locked)
{
    topic.Tag = locked ? QString(lockedTag) : QString();
}

bool TopicField::isLocked(const RichTextBox& topic)
{
    return topic.Tag == lockedTag;
}

void TopicField::show(RichTextBox& topic, const TextWriter& writer, const QString& text)
{
    const EditBlock edit(topic); // laid out once: a topic can be as long as a line of the server
    topic.setText({});
    writer.WriteView(topic, text);
    topic.setSelStart(0);
    topic.setSelLength(1);
    topic.setSelText({});
}

int TopicField::KeyDown(int keyCode) const
{
    const bool erases = keyCode == key_codes::Backspace || keyCode == key_codes::Delete;
    return erases && isLocked(m_room.form.rtbTopic()) ? 0 : keyCode;
}

int TopicField::KeyPress(int character) const
{
    const RichTextBox& topic = m_room.form.rtbTopic();
    if (isLocked(topic))
        return 0;
    if (character != key_codes::Enter)
        return character;
    // The field ends in the line end of its writer, which must not break the line.
    QString text = withoutCarriageReturns(topic.Text());
    text.remove(u'\n');
    m_server.SendData("TOPIC "_L1 + m_room.ChannelName + " :"_L1 + text);
    return 0;
}
