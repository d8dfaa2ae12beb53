#pragma once

#include "platform/Form.h"

class Handlers;
class QComboBox;
class QLabel;
class xpButton;
struct SessionVariables;

// Asks for the font of chat text. Lines that stand keep theirs, and the next start forgets it.
class FontOption final : public Form
{
    Q_OBJECT
public:
    FontOption(const Handlers& handlers, SessionVariables& variables);

    void Form_Load() override;

    void LoadFonts();
    void LoadFontsSize();
    void command1_Click();

private:
    SessionVariables& m_variables;

    QLabel* Label12;
    QComboBox* cmbFontName;
    QComboBox* cmbFontSize;
    xpButton* command1;
};
