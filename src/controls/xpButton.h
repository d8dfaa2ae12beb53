#pragma once

#include <QAbstractButton>
#include <QTimer>

// The push button of all forms. It draws no lines: each of its five looks is a picture, in three
// sizes, with the caption centred on it. Enter and Space do nothing by themselves, see ButtonKeys.
class xpButton final : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(int ButtonSize READ ButtonSize WRITE setButtonSize)
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
    Q_PROPERTY(QColor ForeColor READ ForeColor WRITE setForeColor)

public:
    enum Size { Small = 0, Big = 1, Long = 2 };
    enum class Look { Empty, Hover, Down, Disabled, Focus };

    explicit xpButton(const QString& caption, Size size = Big, QWidget* parent = nullptr);

    int ButtonSize() const { return m_size; }
    void setButtonSize(int size); // other values change nothing
    QString Caption() const { return text(); }
    void setCaption(const QString& caption) { setText(caption); }
    QColor ForeColor() const { return m_foreColor; }
    void setForeColor(const QColor& color);

    Look look() const { return m_look; }
    QSize sizeHint() const override;

Q_SIGNALS:
    void Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum class MouseState { Idle, Hover, Pressed };

    void ApplySize();
    void show(Look look);
    void setPointerInside(bool inside);
    void Timer1_Timer();

    Size m_size = Big;
    QColor m_foreColor = Qt::black;
    Look m_look = Look::Empty;
    MouseState m_mouseState = MouseState::Idle;
    bool m_pointerInside = false;
    // Hover and down are reached by its ticks only; it sleeps when none can change.
    QTimer Timer1{this};
};

// Lets Enter and Space click the button that has the focus of a window.
class ButtonKeys final : public QObject
{
    Q_OBJECT
public:
    explicit ButtonKeys(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
