#pragma once

#include <QScrollBar>

#include <functional>
#include <vector>

// A scroll bar that shows where in the whole something stands.
class MarkedScrollBar final : public QScrollBar
{
    Q_OBJECT
public:
    // From 0, the start, to 1, the end; asked for when the bar is painted.
    using Marks = std::function<std::vector<double>()>;

    MarkedScrollBar(Marks marks, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Marks m_marks;
};
