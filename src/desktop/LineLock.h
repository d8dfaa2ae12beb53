#pragma once

#include <QWidget>

struct LinePrivacy;

// The small lock beside the tabs: whether others can read the line to the server, by a drawing, a
// tooltip and a name for whoever does not see it.
class LineLock final : public QWidget
{
    Q_OBJECT
public:
    explicit LineLock(QWidget* parent = nullptr);

    void showLine(const QString& server, const LinePrivacy& privacy);
    void showNoLine();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void show(const QString& drawing, const QString& words);

    QString m_drawing; // none: there is no line
};
