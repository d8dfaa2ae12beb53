#include "text/Palettes.h"

#include "platform/Handlers.h"
#include "text/ColorTables.h"
#include "text/OwnTextStyle.h"

Palettes::Palettes(const Handlers& handlers, OwnTextStyle& style, PaletteTarget& target)
    : m_style(style)
    , m_target(target)
    , m_smileys([this, &handlers] {
        auto form = std::make_unique<frmSmileys>(handlers);
        handlers.connect(form.get(), &frmSmileys::picked, this,
                         [this](const QString& code) { m_target.appendToInput(code); });
        return form;
    })
    , m_colors([this, &handlers] {
        auto form = std::make_unique<frmcolor>(handlers);
        handlers.connect(form.get(), &frmcolor::picked, this, [this](const QString& code) {
            selectcolor(code);
            m_target.focusInput();
        });
        return form;
    })
{
}

void Palettes::selectcolor(const QString& code)
{
    m_style.TextColor = code;
    m_colors->hide();
    const std::optional<QRgb> value = inputColorOf(code);
    if (!value)
        throw RunTimeError(RunTimeError::Number::TypeMismatch);
    m_target.setInputColor(QColor::fromRgb(*value));
}
