#pragma once

#include <QPixmap>
#include <QWidget>

// A drawing of the program's resources in logical pixels, rendered for a screen's device pixel
// ratio and kept while the toolkit's pixmap cache holds it. Transparent where it cannot be read.
QPixmap svgPixmap(const QString& resource, const QSize& size, qreal devicePixelRatio);

// A widget that shows one drawing, stretched to its size.
class SvgPicture final : public QWidget
{
    Q_OBJECT
public:
    explicit SvgPicture(const QString& resource, QWidget* parent = nullptr);

    QSize sizeHint() const override { return m_sizeHint; }

    // Pale, for something that has no effect just now. It can still be clicked.
    void setDimmed(bool dimmed);
    bool isDimmed() const { return m_dimmed; }
    // A click on it does something: it is reached by Tab and pressed by Space or Enter, too, and a
    // button to screen readers.
    void makeButton();
    bool isButton() const { return m_isButton; }

Q_SIGNALS:
    void Click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QString m_resource;
    QSize m_sizeHint;
    bool m_dimmed = false;
    bool m_isButton = false;
};
