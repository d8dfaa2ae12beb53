#include "account/NetworkForm.h"

#include "controls/FormControls.h"
#include "controls/OneLineField.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"
#include "settings/Settings.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QStyle>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr int fieldWidth = 320;
constexpr int linesOfMeaning = 3; // kept free, so that typing moves nothing

struct Letters
{
    QLatin1StringView word; // of the setting
    QLatin1StringView shown;
};
constexpr Letters letters[]{
    {"utf-8"_L1, "UTF-8, all letters there are"_L1},
    {"windows-1252"_L1, "Windows-1252, for old networks"_L1},
};

QString meaningOf(const ServerAddress& address)
{
    if (!address.isValid())
        return address.error;
    if (address.tls)
        return u"The line will be private: with TLS, and only if the server shows a good "
               u"certificate."_s;
    const QString open =
        u"The line will be open: whoever carries it can read along, passwords too."_s;
    return address.isStandard()
               ? open + u" Most networks offer a private line, ircs://, as well."_s
               : u"A server of the house: its lines have a form of their own. "_s + open;
}

// What is wrong with it; empty when nothing is.
QString faultOfRoom(const QString& room)
{
    static const QString signs = u"#&+!"_s;
    if (room.isEmpty() || signs.contains(room.front()))
        return room.contains(u',') ? u"One room, please."_s : QString();
    return u"The name of a room begins with a #."_s;
}

QLabel* makeNote(const QString& name)
{
    QLabel* note = makeLabel(name);
    note->setWordWrap(true);
    note->setFixedWidth(fieldWidth);
    note->setProperty("quiet", true);
    return note;
}

// A word about what stands above it.
void setNote(QLabel* note, const QString& text, bool wrong)
{
    note->setText(text);
    note->setProperty("quiet", !wrong);
    note->setProperty("wrong", wrong);
    note->style()->unpolish(note);
    note->style()->polish(note);
}

} // namespace

NetworkForm::NetworkForm(const Parts& parts)
    : m_parts(parts)
{
    setObjectName(u"NetworkForm"_s);
    setWindowTitle(u"Choose a Network"_s);
    buildFields();
    layOut();
    connectEvents();
    new ButtonKeys(this);
}

void NetworkForm::buildFields()
{
    cmbServer = makeCombo(u"cmbServer"_s, u"Server"_s);
    cmbServer->setFixedWidth(fieldWidth);
    keepToOneLine(cmbServer->lineEdit());
    lblServer = makeNote(u"lblServer"_s);
    lblServer->setAlignment(Qt::AlignTop);
    lblServer->setMinimumHeight(lblServer->fontMetrics().lineSpacing() * linesOfMeaning);
    lblOverruled = makeNote(u"lblOverruled"_s);
    txtRoom = new QLineEdit;
    txtRoom->setObjectName(u"txtRoom"_s);
    txtRoom->setAccessibleName(u"Room"_s);
    txtRoom->setPlaceholderText(u"none: you enter one by yourself"_s);
    keepToOneLine(txtRoom);
    lblRoom = makeNote(u"lblRoom"_s);
    cmbLetters = new QComboBox;
    cmbLetters->setObjectName(u"cmbLetters"_s);
    cmbLetters->setAccessibleName(u"Letters"_s);
    for (const Letters& row : letters)
        cmbLetters->addItem(row.shown, QString(row.word));
    lblTrial = makeNote(u"lblTrial"_s);
    cmdTry = makeButton(u"cmdTry"_s, u"Try It"_s);
    cmdOK = makeButton(u"cmdOK"_s, u"OK"_s);
    cmdCancel = makeButton(u"cmdCancel"_s, u"Cancel"_s);
}

void NetworkForm::layOut()
{
    auto* fields = new QFormLayout;
    fields->setSpacing(6);
    fields->setLabelAlignment(Qt::AlignLeft);
    fields->addRow(u"&Server:"_s, cmbServer);
    fields->addRow({}, lblServer);
    fields->addRow(u"&Room:"_s, txtRoom);
    fields->addRow({}, lblRoom);
    fields->addRow(u"&Letters:"_s, cmbLetters);
    fields->addRow({}, lblOverruled);
    fields->addRow({}, lblTrial);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addLayout(makeButtonRow({cmdTry, cmdOK, cmdCancel}));
    setFormLayout(layout);
}

void NetworkForm::connectEvents()
{
    const Handlers& handlers = m_parts.handlers;
    handlers.connect(cmbServer, &QComboBox::editTextChanged, this, [this] { explain(); });
    handlers.connect(txtRoom, &QLineEdit::textChanged, this, [this] { explain(); });
    handlers.connect(cmbServer->lineEdit(), &QLineEdit::returnPressed, this,
                     [this] { cmdOK_Click(); });
    handlers.connect(txtRoom, &QLineEdit::returnPressed, this, [this] { cmdOK_Click(); });
    handlers.connect(cmdTry, &xpButton::Click, this, [this] { cmdTry_Click(); });
    handlers.connect(cmdOK, &xpButton::Click, this, [this] { cmdOK_Click(); });
    handlers.connect(cmdCancel, &xpButton::Click, this, [this] { Unload(); });
    handlers.connect(&m_trial, &ConnectionTrial::found, this,
                     [this](const ConnectionTrial::Finding& finding) { tell(finding); });
    handlers.connect(&m_trial, &ConnectionTrial::finished, this, [this] { showTrial(false); });
}

void NetworkForm::Form_Load()
{
    const NetworkChoice current = NetworkChoice::fromSettings(m_parts.settings);
    QStringList addresses = NetworkChoice::usedBefore(m_parts.store);
    addresses << current.server << QStringLiteral(QH_SERVER_HOST);
    addresses.removeDuplicates();
    cmbServer->addItems(addresses);
    cmbServer->setEditText(current.server);
    txtRoom->setText(current.room);
    cmbLetters->setCurrentIndex(std::max(0, cmbLetters->findData(current.charset)));
    const QString overruling = m_parts.settings.overruling(u"connect"_s, u"server"_s);
    lblOverruled->setText("This time the program was started for "_L1 + overruling +
                          ". What you choose here holds from its next start on."_L1);
    lblOverruled->setVisible(!overruling.isEmpty());
    explain();
    cmbServer->setFocus();
    cmbServer->lineEdit()->selectAll();
}

NetworkChoice NetworkForm::choice() const
{
    return {cmbServer->currentText().trimmed(), txtRoom->text().trimmed(),
            cmbLetters->currentData().toString()};
}

void NetworkForm::explain()
{
    const NetworkChoice choice = this->choice();
    const ServerAddress address = ServerAddress::parse(choice.server);
    const QString faultOfRoom = ::faultOfRoom(choice.room);
    setNote(lblServer, meaningOf(address), !address.isValid());
    setNote(lblRoom, faultOfRoom, true);
    lblRoom->setVisible(!faultOfRoom.isEmpty());
    cmdTry->setEnabled(address.isValid());
    cmdOK->setEnabled(address.isValid() && faultOfRoom.isEmpty());
    // What was found of another address says nothing of this one.
    m_trial.cancel();
    m_findings.clear();
    showTrial(false);
}

void NetworkForm::cmdTry_Click()
{
    if (m_trial.isRunning()) {
        m_trial.cancel();
        tell({false, u"You have stopped the trial."_s});
        showTrial(false);
        return;
    }
    const ServerAddress address = ServerAddress::parse(choice().server);
    if (!address.isValid())
        return;
    m_findings.clear();
    showTrial(true);
    m_trial.start(address, m_parts.settings.ReadStored(u"connect"_s, u"cafile"_s, {}).trimmed());
}

void NetworkForm::tell(const ConnectionTrial::Finding& finding)
{
    m_findings += (finding.good ? u"✓ "_s : u"✗ "_s) + finding.text;
    showTrial(m_trial.isRunning());
}

void NetworkForm::showTrial(bool running)
{
    QStringList lines = m_findings;
    if (running)
        lines += u"Trying ..."_s;
    lblTrial->setText(lines.join(u'\n'));
    lblTrial->setVisible(!lines.isEmpty());
    cmdTry->setCaption(running ? u"Stop"_s : u"Try It"_s);
}

void NetworkForm::cmdOK_Click()
{
    if (!cmdOK->isEnabled())
        return;
    choice().save(m_parts.settings, m_parts.store);
    m_parts.chosen();
    Unload();
}
