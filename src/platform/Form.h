#pragma once

#include <QCloseEvent>
#include <QWidget>

#include <functional>
#include <memory>
#include <utility>

// A small window with the life of a form: it is loaded when it is first touched (Form_Load) and
// unloaded when it is closed (Form_Unload), after which nothing of it is left. Kept in a FormSlot.
class Form : public QWidget
{
    Q_OBJECT
public:
    explicit Form(QWidget* parent = nullptr)
        : QWidget(parent)
    {
    }

    virtual void Form_Load() {}
    virtual void Form_Unload() {}

    void Show()
    {
        show();
        raise();
        activateWindow();
    }
    // Like the window's close button.
    void Unload() { Q_EMIT unloadRequested(); }

Q_SIGNALS:
    void unloadRequested();

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore(); // the slot hides it and lets it go
        Unload();
    }
};

// The one instance of a form. Asking for it loads it.
template<typename T>
class FormSlot final
{
public:
    using Make = std::function<std::unique_ptr<T>()>;

    explicit FormSlot(Make make)
        : m_make(std::move(make))
    {
    }
    Q_DISABLE_COPY_MOVE(FormSlot)
    ~FormSlot() = default;

    // Raises what Form_Load raises; the form is not loaded then.
    T& operator()()
    {
        if (m_form)
            return *m_form;
        m_form = m_make();
        QObject::connect(m_form.get(), &Form::unloadRequested, m_form.get(), [this] { Unload(); });
        try {
            m_form->Form_Load();
        } catch (...) {
            m_form.reset();
            throw;
        }
        return *m_form;
    }
    T* operator->() { return &(*this)(); }

    bool isLoaded() const { return m_form != nullptr; }
    bool isVisible() const { return m_form && m_form->isVisible(); }

    void Unload()
    {
        if (!m_form)
            return;
        m_form->Form_Unload();
        m_form->hide();
        m_form.release()->deleteLater(); // it may be its own handler that asks
    }

private:
    Make m_make;
    std::unique_ptr<T> m_form;
};
