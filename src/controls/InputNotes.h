#pragma once

#include <QLabel>

class QLineEdit;

// The quiet line above an input line: what a newcomer should know of the text before it is sent.
// It takes no room while there is nothing to say. Make it after the field's own limits and filters
// (keepToOneLine), whose work it tells of.
class InputNotes final : public QLabel
{
    Q_OBJECT
public:
    // What is said while the text begins with a slash.
    InputNotes(QLineEdit* field, QString ofSlash, QWidget* parent = nullptr);

private:
    void tell(const QString& text);

    QLineEdit* m_field;
    QString m_ofSlash;
};
