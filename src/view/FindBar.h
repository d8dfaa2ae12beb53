#pragma once

#include "view/TextSearch.h"

#include <QFrame>

class QLabel;
class QLineEdit;

// The little form in the corner of a chat view that asks what to find.
class FindBar final : public QFrame
{
    Q_OBJECT
public:
    explicit FindBar(QWidget* parent);

    // Shows it, ready to type over what was last looked for.
    void open();
    QString text() const;
    void showResult(bool found);

Q_SIGNALS:
    void TextEdited();
    void FindNext(SearchDirection direction);
    void Closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void close();

    QLineEdit* m_text;
    QLabel* m_result;
};
