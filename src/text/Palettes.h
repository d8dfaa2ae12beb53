#pragma once

#include "platform/Form.h"
#include "text/frmSmileys.h"
#include "text/frmcolor.h"

#include <QColor>
#include <QObject>

class Handlers;
struct OwnTextStyle;

// The input line that the palettes are for.
class PaletteTarget
{
public:
    virtual ~PaletteTarget() = default;

    virtual void appendToInput(const QString& text) = 0;
    virtual void setInputColor(const QColor& color) = 0;
    virtual void focusInput() = 0;
};

// The two palettes and what a pick in them means: a smiley goes into the input line, a colour
// becomes the one of the user's own text.
class Palettes final : public QObject
{
    Q_OBJECT
public:
    Palettes(const Handlers& handlers, OwnTextStyle& style, PaletteTarget& target);

    void showSmileys() { m_smileys->Show(); }
    void showColors() { m_colors->Show(); }
    void unloadSmileys() { m_smileys.Unload(); }

    // The colour of the user's own text, by its code. An unknown one raises TypeMismatch (13).
    void selectcolor(const QString& code);

private:
    OwnTextStyle& m_style;
    PaletteTarget& m_target;
    FormSlot<frmSmileys> m_smileys;
    FormSlot<frmcolor> m_colors;
};
