#pragma once

#include <QAbstractButton>
#include <QList>

#include <initializer_list>

// One thing to pick in a palette. It never takes the focus by a click.
class PaletteItem : public QAbstractButton
{
    Q_OBJECT
public:
    explicit PaletteItem(const QSize& size);

    QSize sizeHint() const final { return m_size; }

protected:
    virtual void paintContent(QPainter& painter, const QRect& room) = 0;
    void paintEvent(QPaintEvent* event) final;

private:
    QSize m_size;
};

// What palettes are alike in: a window of tools with its rows below each other, always as large as
// they need.
void setUpPalette(QWidget& window, const QString& name, const QString& title,
                  std::initializer_list<QWidget*> rows);

// Things to pick in rows. Tab enters and leaves it, the arrow keys move inside, Space and Enter
// pick.
class PaletteGrid final : public QWidget
{
    Q_OBJECT
public:
    explicit PaletteGrid(int columns, QWidget* parent = nullptr);

    void add(PaletteItem* item, int columnSpan = 1);
    // Stands in the grid and is nothing to pick.
    void addOther(QWidget* widget);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Place
    {
        PaletteItem* item;
        int row;
    };

    void put(QWidget* widget, int columnSpan, Qt::Alignment alignment);
    void moveTo(PaletteItem* item);
    PaletteItem* neighbour(qsizetype from, int key) const;
    PaletteItem* nearestInRow(int row, int x) const;

    int m_columns;
    int m_row = 0;
    int m_column = 0;
    QList<Place> m_places;
};
