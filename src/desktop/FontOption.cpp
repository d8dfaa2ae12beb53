#include "desktop/FontOption.h"

#include "common/Conversions.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "controls/FormControls.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLineEdit>
#include <QRegularExpressionValidator>

using namespace Qt::StringLiterals;

FontOption::FontOption(const Handlers& handlers, SessionVariables& variables)
    : m_variables(variables)
    , Label12(makeLabel(u"Label12"_s, u"Font:"_s))
    , cmbFontName(makeCombo(u"cmbFontName"_s, u"Font name"_s))
    , cmbFontSize(makeCombo(u"cmbFontSize"_s, u"Font size"_s))
    , command1(makeButton(u"command1"_s, u"OK"_s))
{
    setObjectName("FontOption"_L1);
    setWindowTitle(u"Change Your Font Name and Font Size"_s);

    // Completing inside the line would make an installed name of every beginning of one, and a
    // list of completions takes the next click and what is typed after it.
    cmbFontName->setCompleter(nullptr);
    cmbFontName->setMinimumContentsLength(22);
    cmbFontSize->setCompleter(nullptr);
    cmbFontSize->setMinimumContentsLength(4);
    cmbFontSize->setValidator(
        new QRegularExpressionValidator(QRegularExpression(u"[+-]?[0-9]{0,5}"_s), cmbFontSize));

    auto* layout = new QGridLayout(this);
    setFormLayout(layout);
    layout->addWidget(Label12, 0, 0);
    layout->addWidget(cmbFontName, 0, 1);
    layout->addWidget(cmbFontSize, 0, 2);
    layout->addWidget(command1, 1, 1, 1, 2, Qt::AlignRight);

    setTabOrder(cmbFontName, cmbFontSize);
    setTabOrder(cmbFontSize, command1);
    new ButtonKeys(this);
    handlers.connect(command1, &xpButton::Click, this, [this] { command1_Click(); });
}

void FontOption::Form_Load()
{
    LoadFonts();
    LoadFontsSize();
}

void FontOption::LoadFonts()
{
    cmbFontName->addItems(QFontDatabase::families());
    cmbFontName->setCurrentIndex(-1);
    const QString fontName = beforeNul(m_variables.FontName).toLower();
    for (int i = 0; i < cmbFontName->count(); ++i) {
        if (cmbFontName->itemText(i).toLower() == fontName)
            cmbFontName->setCurrentIndex(i);
    }
    // The typeface in use may be none of the installed ones.
    cmbFontName->lineEdit()->setPlaceholderText(beforeNul(m_variables.FontName));
    cmbFontSize->setEditText(QString::number(m_variables.FontSize));
}

void FontOption::LoadFontsSize()
{
    // As many sizes as there are fonts: the loop counts the other list.
    const qsizetype fonts = QFontDatabase::families().size();
    QStringList sizes;
    for (qsizetype i = 1; i <= fonts; ++i)
        sizes += QString::number(i - 1);
    cmbFontSize->addItems(sizes);
    cmbFontSize->setCurrentIndex(cmbFontSize->findText(u"0"_s));
    cmbFontSize->setEditText(QString::number(m_variables.FontSize));
}

void FontOption::command1_Click()
{
    if (!cmbFontName->currentText().isEmpty())
        m_variables.FontName = cmbFontName->currentText();
    // A field that was emptied, or holds more than a size can be, leaves the size as it is.
    skipRest([this] { m_variables.FontSize = toInt16(cmbFontSize->currentText()); });
    Unload();
}
