#pragma once

#include <QString>

#include <functional>

// A list of text rows, zero-based. Reading a row past the end gives the empty text; writing or
// removing one that is not there does nothing.
class ListBox
{
public:
    virtual ~ListBox() = default;

    // A sorted list puts the row at its place, see Collation.h; others at the end.
    virtual void AddItem(const QString& text) = 0;
    virtual void RemoveItem(int index) = 0;
    virtual void Clear() = 0;
    virtual int ListCount() const = 0;
    virtual QString List(int index) const = 0;
    // The first row that is looked for, -1 without one. The same as a look at one row after the
    // other, but quicker where rows are many.
    virtual int find(const std::function<bool(const QString& row)>& isIt) const
    {
        for (int index = 0; index < ListCount(); ++index) {
            if (isIt(List(index)))
                return index;
        }
        return -1;
    }
    // Overwrites the row in place; a sorted list does not move it.
    virtual void setList(int index, const QString& text) = 0;
    virtual int ListIndex() const = 0; // -1: no row is selected
    virtual void setListIndex(int index) = 0;
    virtual void setEnabled(bool enabled) = 0;

    // The selected row's text, empty without one.
    QString Text() const { return List(ListIndex()); }
};
