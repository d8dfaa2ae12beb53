#pragma once

#include "desktop/NotificationArea.h"

#include <QIcon>
#include <QObject>

class Dialogs;
class Handlers;
class QWidget;

// The window that owns the tray icon, as far as the icon acts on it.
class SourceForm
{
public:
    enum WindowStates { Normal = 0, Minimized = 1, Maximized = 2 };

    virtual ~SourceForm() = default;

    virtual int WindowState() const = 0;
    virtual void setWindowState(int state) = 0;
    virtual void Show() = 0; // a shown window has its entry in the task list, a hidden one none
    virtual void Hide() = 0;
    virtual void setCaption(const QString& caption) = 0;
    virtual QIcon Icon() const = 0;
};

// A window of the toolkit. A desktop forgets that a window was minimised once it is hidden, so that
// is kept here until the window is shown again.
class WidgetSourceForm final : public QObject, public SourceForm
{
    Q_OBJECT
public:
    explicit WidgetSourceForm(QWidget& window);

    int WindowState() const override;
    void setWindowState(int state) override;
    void Show() override;
    void Hide() override;
    void setCaption(const QString& caption) override;
    QIcon Icon() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_window;
    bool m_hiddenMinimized = false;
};

// One icon in the notification area and the six events of its two buttons. Order of use: source
// window, icon, IconInSysTray, tip.
class clsSysTray final : public QObject
{
    Q_OBJECT
public:
    clsSysTray(const Handlers& handlers, NotificationArea& area, Dialogs& dialogs);

    QString ToolTip() const { return m_toolTip; }
    void setToolTip(const QString& text) { ChangeToolTip(text); }
    QIcon Icon() const { return m_icon; }
    void setIcon(const QIcon& picture) { ChangeIcon(picture); }
    SourceForm* SourceWindow() const { return m_sourceWindow; }
    void setSourceWindow(SourceForm* window);

    bool DefaultDblClk = true; // a left double click shows and hides the window

    void RemoveFromSysTray();
    void IconInSysTray();
    void MinToSysTray();
    void ChangeIcon(const QIcon& picture);
    void ChangeToolTip(const QString& text);

Q_SIGNALS:
    void LButtonDblClk();
    void LButtonDown();
    void LButtonUp();
    void RButtonDblClk();
    void RButtonDown();
    void RButtonUp();

private:
    SourceForm& source() const; // raises 91 when there is none
    void CreateHook();
    void pichook_MouseMove(NotificationArea::Message message);
    void DefaultDoubleClick();

    NotificationArea& m_area;
    Dialogs& m_dialogs;
    SourceForm* m_sourceWindow = nullptr;
    QString m_toolTip;
    QIcon m_icon;
    NotificationArea::Record m_record;
    bool m_hooked = false;
    bool m_handling = false;
};
