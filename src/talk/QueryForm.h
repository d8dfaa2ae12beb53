#pragma once

#include "platform/Form.h"
#include "room/NickCompletion.h"
#include "text/CheckRTF.h"
#include "view/ChatView.h"
#include "view/InputKeys.h"

#include <QTimer>

#include <array>

class QLabel;
class QLineEdit;
class QToolButton;
class SvgPicture;

// The window of one private conversation: its controls, where they stand, and what the user does
// to them as signals. What that means is decided by the Query that owns it.
class QueryForm final : public Form
{
    Q_OBJECT
public:
    enum Link { Label4, Label5, Label6, Label7, Label8, cmdOptions, LabelAction, LinkCount };

    explicit QueryForm(std::shared_ptr<ViewLook> look = nullptr);

    ChatView& DataIn() { return *m_dataIn; }
    QLineEdit& DataOut() { return *m_dataOut; }
    SvgPicture& Image2() { return *m_image2; }
    QToolButton& link(Link link) { return *m_links[link]; }
    QTimer& flsh() { return m_flsh; }

    // Whose names Tab completes.
    void setNames(NickCompletion::Names names) { m_names = std::move(names); }

    // Whose nick it is goes to the wire from here, so it is kept whole.
    const QString& Caption() const { return m_caption; }
    void setCaption(const QString& caption);
    void setNickLabel(const QString& nick);
    void setHostLabel(const QString& host);
    void setInputColor(QRgb color);
    // What the input line says of itself: whether the other one hears.
    void setConnected(bool connected);
    void setPointerShape(Qt::CursorShape shape);

Q_SIGNALS:
    // It became the active window or was given the focus.
    void Activate();
    // Over the window itself, DataOut or Image2. The view has its own signal.
    void MouseMove();
    // Keys in DataOut, before it sees them itself, by the codes of KeyCodes.h.
    void KeyDown(int keyCode);
    void KeyPress(int character);

protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createLinks();
    void arrange();
    void announceKey(const QKeyEvent& event);

    QLabel* m_lblNick;
    QLabel* m_lblHost;
    QString m_caption;
    ChatView* m_dataIn;
    SmileyPass m_smileys;
    QLineEdit* m_dataOut;
    InputKeys m_inputKeys;
    SvgPicture* m_image2;
    std::array<QToolButton*, LinkCount> m_links{};
    QTimer m_flsh;
    NickCompletion::Names m_names;
};
