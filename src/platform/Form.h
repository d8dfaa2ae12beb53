#pragma once

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
    enum class Escape { Closes, IsNoKey };

    explicit Form(QWidget* parent = nullptr)
        : QWidget(parent)
    {
    }

    virtual void Form_Load() {}
    virtual void Form_Unload() {}

    void Show();
    // Like the window's close button.
    void Unload() { Q_EMIT unloadRequested(); }
    // What the key does; small windows are closed by it.
    void setEscape(Escape escape) { m_escape = escape; }

    // The one end of a form. At once it is hidden, its timers stand still, and no handler hears
    // of it and its controls any more. It is deleted when none of its own handlers runs: they may
    // have let the event in that closes it.
    static void end(std::unique_ptr<Form> form);

Q_SIGNALS:
    void unloadRequested();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    friend class RunningHandler;

    Escape m_escape = Escape::Closes;
    int m_runningHandlers = 0;
    bool m_ended = false;
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
        Form::end(std::move(m_form));
    }

private:
    Make m_make;
    std::unique_ptr<T> m_form;
};
