#pragma once

#include "desktop/PopupSlide.h"
#include "platform/Form.h"
#include "session/Ports.h"

#include <QTimer>

#include <functional>

class EventLoop;
class Handlers;
class QLabel;

// A small box above all windows that rises at the lower right of the screen, stays for four seconds
// and sinks away. It never takes the focus. A click on its text brings the main window.
class frmPopup final : public Form, public Popup
{
    Q_OBJECT
public:
    using ShowChannel = std::function<void()>; // makes the main window visible and shows it

    frmPopup(const Handlers& handlers, EventLoop& events, ShowChannel showChannel);

    void Form_Load() override;
    void Form_Unload() override;

    void Show() override; // one that is up goes on as it is
    void setBody(const QString& text) override;

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Timer1_Timer();
    void follow();

    const Handlers& m_handlers;
    EventLoop& m_events;
    ShowChannel m_showChannel;
    QRect m_screen; // pixels
    PopupSlide m_slide;
    bool m_loaded = false;

    QLabel* Label1;
    QLabel* Label2;
    QTimer Timer1{this};
};

// The popup as the rest of the program knows it: there is always one to ask, and asking loads it.
class PopupOnDemand final : public Popup
{
public:
    explicit PopupOnDemand(FormSlot<frmPopup>& slot)
        : m_slot(slot)
    {
    }

    void Show() override { m_slot().Show(); }
    void setBody(const QString& text) override { m_slot().setBody(text); }

private:
    FormSlot<frmPopup>& m_slot;
};
