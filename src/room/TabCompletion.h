#pragma once

#include "room/NickCompletion.h"

#include <QObject>

class QLineEdit;

// Tab in an input line completes the name in front of the caret, Shift and Tab go back; where no
// name fits the keys move the focus. Filters of the field that are to see every key have to be
// installed after this one.
class TabCompletion final : public QObject
{
    Q_OBJECT
public:
    TabCompletion(QLineEdit* field, NickCompletion::Names names);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* m_field;
    NickCompletion m_completion;
};
