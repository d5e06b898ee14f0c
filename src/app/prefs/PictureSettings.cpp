// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/prefs/PictureSettings.h"

#include "app/prefs/PopUpButton.h"
#include "core/Shadow.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/PreferenceActions.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>

namespace app {

namespace keys = settings::keys;

namespace {

QColor chooseColourWithDialog(QWidget* parent, const QColor& current)
{
    return QColorDialog::getColor(current, parent,
                                  QCoreApplication::translate("Localizable", "Shadow Colour"),
                                  QColorDialog::ShowAlphaChannel);
}

// The stored names of the save-and-open modifier with the keys they stand
// for here (Command is Ctrl, Control is Super, Option is Alt).
struct ModifierChoice
{
    const char* stored;
    const char* shown;
};
constexpr ModifierChoice kModifierChoices[] = {
    {"Command", "Ctrl"},
    {"Control", "Super"},
    {"Option", "Alt"},
};

// The first two items of the application pop-up; the desktop's image
// applications follow them.
enum AppToOpenItem
{
    DefaultApplication = 0,
    FileManager = 1,
    FirstApplication = 2,
};

} // namespace

PictureSettings::PictureSettings(settings::Defaults& defaults, QWidget* window)
    : QObject(window)
    , m_defaults(defaults)
    , m_window(window)
    , m_chooseColour(chooseColourWithDialog)
{}

void PictureSettings::setColourChooser(ColourChooser chooser)
{
    m_chooseColour = chooser ? std::move(chooser) : ColourChooser(chooseColourWithDialog);
}

void PictureSettings::setImageApplications(std::vector<platform::Application> applications)
{
    m_applications = std::move(applications);
    showAppToOpen();
}

void PictureSettings::addRows(QFormLayout* form)
{
    auto* shadowRow = new QHBoxLayout;
    shadowRow->setSpacing(8);
    m_needShadow =
        new QCheckBox(QCoreApplication::translate("Localizable", "Add a shado&w of"), m_window);
    m_needShadow->setObjectName(QString(keys::needShadowOfnotSingleWindow));
    shadowRow->addWidget(m_needShadow);
    m_shadowSize = new QSpinBox(m_window);
    m_shadowSize->setObjectName(QString(keys::sizeOfShadow));
    // The range the start-up check accepts.
    m_shadowSize->setRange(0, 100);
    m_shadowSize->setSuffix(QCoreApplication::translate("Localizable", " pt"));
    shadowRow->addWidget(m_shadowSize);
    m_shadowColour = new QPushButton(m_window);
    m_shadowColour->setObjectName(QString(keys::colorOfShadow));
    m_shadowColour->setToolTip(QCoreApplication::translate("Localizable", "Shadow colour"));
    shadowRow->addWidget(m_shadowColour);
    shadowRow->addStretch(1);
    form->addRow(QCoreApplication::translate("Localizable", "Pictures:"), shadowRow);

    m_needFillet = new QCheckBox(
        QCoreApplication::translate("Localizable", "&Round the corners of regions"), m_window);
    m_needFillet->setObjectName(QString(keys::needFilletOfnotSingleWindow));
    form->addRow(QString(), m_needFillet);

    m_doubleClickCopies = new QCheckBox(
        QCoreApplication::translate("Localizable", "Double-&click in a selection copies it"),
        m_window);
    m_doubleClickCopies->setObjectName(QString(keys::doubleClickToSavePaste));
    form->addRow(QString(), m_doubleClickCopies);

    auto* modifierRow = new QHBoxLayout;
    modifierRow->setSpacing(8);
    m_saveAndOpenModifier = new PopUpButton(m_window);
    m_saveAndOpenModifier->setObjectName(QString(keys::doubleClickModifierKey));
    QStringList shown;
    for (const ModifierChoice& choice : kModifierChoices)
        shown << QString::fromLatin1(choice.shown);
    m_saveAndOpenModifier->setItems(shown);
    m_saveAndOpenModifier->setMinimumWidth(80);
    modifierRow->addWidget(m_saveAndOpenModifier);
    modifierRow->addWidget(new QLabel(
        QCoreApplication::translate("Localizable", "tapped twice saves and opens the picture"),
        m_window));
    modifierRow->addStretch(1);
    auto* modifierLabel =
        new QLabel(QCoreApplication::translate("Localizable", "Save and open:"), m_window);
    modifierLabel->setBuddy(m_saveAndOpenModifier);
    form->addRow(modifierLabel, modifierRow);

    m_appToOpen = new PopUpButton(m_window);
    m_appToOpen->setObjectName(QStringLiteral("selectedAppName"));
    m_appToOpen->setMinimumWidth(200);
    m_appToOpen->setMaximumWidth(300);
    auto* appLabel =
        new QLabel(QCoreApplication::translate("Localizable", "Open &with:"), m_window);
    appLabel->setBuddy(m_appToOpen);
    form->addRow(appLabel, m_appToOpen);
    connectControls();
}

QWidget* PictureSettings::chainTabOrder(QWidget* previous)
{
    for (QWidget* control :
         {static_cast<QWidget*>(m_needShadow), static_cast<QWidget*>(m_shadowSize),
          static_cast<QWidget*>(m_shadowColour), static_cast<QWidget*>(m_needFillet),
          static_cast<QWidget*>(m_doubleClickCopies), static_cast<QWidget*>(m_saveAndOpenModifier),
          static_cast<QWidget*>(m_appToOpen)}) {
        QWidget::setTabOrder(previous, control);
        previous = control;
    }
    return previous;
}

void PictureSettings::connectControls()
{
    // The switches stored as "YES" and "NO".
    const auto storeYesNo = [this](QCheckBox* box, settings::keys::Key key) {
        connect(box, &QCheckBox::clicked, this, [this, key](bool on) {
            settings::setYesNo(m_defaults, key, on);
            m_defaults.synchronize();
        });
    };
    storeYesNo(m_needShadow, keys::needShadowOfnotSingleWindow);
    storeYesNo(m_needFillet, keys::needFilletOfnotSingleWindow);
    storeYesNo(m_doubleClickCopies, keys::doubleClickToSavePaste);
    connect(m_needShadow, &QCheckBox::toggled, m_shadowSize, &QWidget::setEnabled);
    connect(m_needShadow, &QCheckBox::toggled, m_shadowColour, &QWidget::setEnabled);
    connect(m_shadowSize, &QSpinBox::valueChanged, this, [this](int points) {
        m_defaults.setObject(keys::sizeOfShadow, QString::number(points));
        m_defaults.synchronize();
    });
    connect(m_shadowColour, &QPushButton::clicked, this, &PictureSettings::chooseShadowColour);
    connect(m_saveAndOpenModifier, &PopUpButton::activated, this, [this](int index) {
        m_defaults.setObject(keys::doubleClickModifierKey,
                             QString::fromLatin1(kModifierChoices[index].stored));
        m_defaults.synchronize();
    });
    connect(m_appToOpen, &PopUpButton::activated, this, &PictureSettings::appToOpenChosen);
}

void PictureSettings::reload()
{
    const bool shadow = m_defaults.boolForKey(keys::needShadowOfnotSingleWindow);
    m_needShadow->setChecked(shadow);
    {
        // Showing the stored size is no change of it.
        const QSignalBlocker quiet(m_shadowSize);
        m_shadowSize->setValue(static_cast<int>(m_defaults.integerForKey(keys::sizeOfShadow)));
    }
    m_shadowSize->setEnabled(shadow);
    m_shadowColour->setEnabled(shadow);
    showShadowColour(core::shadowColourFrom(m_defaults.stringForKey(keys::colorOfShadow)));
    m_needFillet->setChecked(m_defaults.boolForKey(keys::needFilletOfnotSingleWindow));
    m_doubleClickCopies->setChecked(m_defaults.boolForKey(keys::doubleClickToSavePaste));
    const QString modifier = m_defaults.stringForKey(keys::doubleClickModifierKey);
    m_saveAndOpenModifier->setTitle(modifier);
    for (int i = 0; i < static_cast<int>(std::size(kModifierChoices)); ++i) {
        if (modifier == QLatin1String(kModifierChoices[i].stored))
            m_saveAndOpenModifier->selectItem(i);
    }
    showAppToOpen();
}

void PictureSettings::showShadowColour(const QColor& colour)
{
    // The colour over a chequer board, so its transparency shows.
    QPixmap swatch(28, 14);
    swatch.fill(Qt::white);
    {
        QPainter painter(&swatch);
        for (int y = 0; y < swatch.height(); y += 7) {
            for (int x = (y / 7) % 2 * 7; x < swatch.width(); x += 14)
                painter.fillRect(x, y, 7, 7, QColor(0xcc, 0xcc, 0xcc));
        }
        painter.fillRect(swatch.rect(), colour);
    }
    m_shadowColour->setIcon(QIcon(swatch));
    m_shadowColour->setIconSize(swatch.size());
    m_shadowColour->setText(colour.name(QColor::HexArgb).toUpper());
}

void PictureSettings::chooseShadowColour()
{
    const QColor current = core::shadowColourFrom(m_defaults.stringForKey(keys::colorOfShadow));
    const QColor chosen = m_chooseColour(m_window, current);
    if (!chosen.isValid())
        return;
    m_defaults.setObject(keys::colorOfShadow, chosen.name(QColor::HexArgb));
    m_defaults.synchronize();
    showShadowColour(chosen);
}

void PictureSettings::showAppToOpen()
{
    QStringList titles{QCoreApplication::translate("Localizable", "The desktop's default"),
                       QCoreApplication::translate("Localizable", "The file manager (show it)")};
    for (const platform::Application& app : m_applications)
        titles << app.name;
    m_appToOpen->setItems(titles);

    const QVariantMap chosen = m_defaults.dictionaryForKey(keys::appOfUserSpecified);
    const QString id = chosen.value(QStringLiteral("bundleIdentifier")).toString();
    if (id.isEmpty()) {
        m_appToOpen->selectItem(DefaultApplication);
        return;
    }
    if (id == QLatin1String(platform::kFileManagerChoice)) {
        m_appToOpen->selectItem(FileManager);
        return;
    }
    for (std::size_t i = 0; i < m_applications.size(); ++i) {
        if (m_applications[i].desktopId == id) {
            m_appToOpen->selectItem(FirstApplication + static_cast<int>(i));
            return;
        }
    }
    // A choice that is no longer installed is shown, not replaced; opening
    // falls back on the desktop's default.
    const QString executable = chosen.value(QStringLiteral("executableName")).toString();
    m_appToOpen->selectItem(-1);
    m_appToOpen->setTitle(executable.isEmpty() ? id : executable);
}

void PictureSettings::appToOpenChosen(int index)
{
    if (index == DefaultApplication) {
        m_defaults.removeObjectForKey(keys::appOfUserSpecified);
    } else if (index == FileManager) {
        m_defaults.setObject(keys::appOfUserSpecified,
                             QVariantMap{{QStringLiteral("bundleIdentifier"),
                                          QString::fromLatin1(platform::kFileManagerChoice)},
                                         {QStringLiteral("executableName"), QString()}});
    } else {
        const platform::Application& app =
            m_applications.at(static_cast<std::size_t>(index - FirstApplication));
        m_defaults.setObject(keys::appOfUserSpecified,
                             QVariantMap{{QStringLiteral("bundleIdentifier"), app.desktopId},
                                         {QStringLiteral("executableName"), app.executableName}});
    }
    m_defaults.synchronize();
}

} // namespace app
