#pragma once

#include "platform/Form.h"

class Handlers;
class QComboBox;
class QLabel;
class xpButton;
struct SessionVariables;

// Asks for the font of chat text. It holds for what is written from then on and is gone at exit.
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
