// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/prefs/PreferencesWindow.h"

#include "app/hotkeys/HotKeyTable.h"
#include "app/hotkeys/KeyComboCodec.h"
#include "app/hotkeys/ShortcutEditing.h"
#include "app/prefs/PopUpButton.h"
#include "app/prefs/ShortcutRecorder.h"
#include "core/Localized.h"
#include "core/Shadow.h"
#include "platform/Autostart.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/PreferenceActions.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QColorDialog>
#include <QFileDialog>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSpinBox>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <QWindow>
#include <QtDebug>

namespace app {

namespace keys = settings::keys;

namespace {

QString chooseFolderWithDialog(QWidget* parent, const QString& startFolder)
{
    return QFileDialog::getExistingDirectory(
        parent, QCoreApplication::translate("Localizable", "Choose a Folder for Screenshots"),
        startFolder, QFileDialog::ShowDirsOnly);
}

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

QLabel* caption(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, palette.color(QPalette::PlaceholderText));
    label->setPalette(palette);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 0.9);
    label->setFont(font);
    return label;
}

QFrame* rule(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

PreferencesWindow::PreferencesWindow(settings::Defaults& defaults, platform::Autostart& autostart,
                                     QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_defaults(defaults)
    , m_autostart(autostart)
    , m_savePathMenu(defaults)
    , m_chooseFolder(chooseFolderWithDialog)
    , m_chooseColour(chooseColourWithDialog)
{
    setWindowTitle(QStringLiteral("Kelvo"));
    setObjectName(QStringLiteral("preferencesWindow"));
    buildControls();
    connectControls();
    reloadFromDefaults();

    auto* close = new QShortcut(QKeySequence::Close, this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &QWidget::close);
}

PreferencesWindow::~PreferencesWindow() = default;

void PreferencesWindow::setFolderChooser(FolderChooser chooser)
{
    m_chooseFolder = chooser ? std::move(chooser) : FolderChooser(chooseFolderWithDialog);
}

void PreferencesWindow::setColourChooser(ColourChooser chooser)
{
    m_chooseColour = chooser ? std::move(chooser) : ColourChooser(chooseColourWithDialog);
}

void PreferencesWindow::setImageApplications(std::vector<platform::Application> applications)
{
    m_applications = std::move(applications);
    showAppToOpen();
}

void PreferencesWindow::buildControls()
{
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(24, 20, 24, 24);
    root->setSpacing(10);

    // Header: icon, name and version.
    auto* header = new QHBoxLayout;
    header->setSpacing(14);
    const QIcon appIcon = QApplication::windowIcon();
    if (!appIcon.isNull()) {
        auto* icon = new QLabel(this);
        icon->setPixmap(appIcon.pixmap(48, 48));
        header->addWidget(icon, 0, Qt::AlignTop);
    }
    auto* titles = new QVBoxLayout;
    titles->setSpacing(2);
    auto* name = new QLabel(QStringLiteral("Kelvo"), this);
    QFont nameFont = name->font();
    nameFont.setPointSizeF(nameFont.pointSizeF() * 1.5);
    nameFont.setBold(true);
    name->setFont(nameFont);
    titles->addWidget(name);
    m_version = caption(settings::versionCaption(QCoreApplication::applicationVersion()), this);
    m_version->setObjectName(QStringLiteral("version"));
    m_version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    titles->addWidget(m_version);
    header->addLayout(titles, 1);
    root->addLayout(header);

    root->addSpacing(4);
    root->addWidget(rule(this));
    root->addSpacing(4);

    // One form for everything, labels right-aligned against one column of
    // controls, groups apart by rules: the classic preferences layout.
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFormAlignment(Qt::AlignHCenter | Qt::AlignTop);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setHorizontalSpacing(12);
    form->setVerticalSpacing(8);

    m_startAtLogin = new QCheckBox(
        QCoreApplication::translate("Localizable", "Start Kelvo when I &log in"), this);
    m_startAtLogin->setObjectName(QString(keys::autoStartAtLogin));
    form->addRow(QCoreApplication::translate("Localizable", "General:"), m_startAtLogin);
    m_loginItemError = new QLabel(this);
    m_loginItemError->setObjectName(QStringLiteral("loginItemError"));
    m_loginItemError->setWordWrap(true);
    m_loginItemError->setMaximumWidth(300);
    {
        QPalette palette = m_loginItemError->palette();
        palette.setColor(QPalette::WindowText, QColor(0xc0, 0x1c, 0x28));
        m_loginItemError->setPalette(palette);
    }
    m_loginItemError->hide();
    form->addRow(QString(), m_loginItemError);
    m_hideMenuBarIcon = new QCheckBox(
        QCoreApplication::translate("Localizable", "&Hide the icon in the system tray"), this);
    m_hideMenuBarIcon->setObjectName(QString(keys::hideMenuBarIcon));
    form->addRow(QString(), m_hideMenuBarIcon);
    form->addRow(rule(this));

    m_playSound = new QCheckBox(
        QCoreApplication::translate("Localizable", "&Play a sound when taking a screenshot"), this);
    m_playSound->setObjectName(QString(keys::playSoundWhenScreenShots));
    form->addRow(QCoreApplication::translate("Localizable", "Capturing:"), m_playSound);
    m_notify = new QCheckBox(
        QCoreApplication::translate("Localizable", "Show a &notification when a file is saved"),
        this);
    m_notify->setObjectName(QString(keys::notifyWhenComplete));
    form->addRow(QString(), m_notify);
    form->addRow(rule(this));

    m_savePath = new PopUpButton(this);
    m_savePath->setObjectName(QStringLiteral("buttonOfSavePath"));
    m_savePath->setMinimumWidth(200);
    m_savePath->setMaximumWidth(300);
    form->addRow(QCoreApplication::translate("Localizable", "&Save to:"), m_savePath);

    m_format = new PopUpButton(this);
    m_format->setObjectName(QString(keys::formatOfSavePhoto));
    m_format->setItems(settings::formatMenuTitles());
    m_format->setMinimumWidth(96);
    form->addRow(QCoreApplication::translate("Localizable", "File &format:"), m_format);

    m_retinaQuality = new QRadioButton(
        QCoreApplication::translate("Localizable", "High &density (every screen pixel)"), this);
    m_retinaQuality->setObjectName(QStringLiteral("retinaImageButton"));
    m_normalQuality = new QRadioButton(
        QCoreApplication::translate("Localizable", "N&ormal (one pixel per point)"), this);
    m_normalQuality->setObjectName(QStringLiteral("normalImageButton"));
    auto* qualityGroup = new QButtonGroup(this);
    qualityGroup->addButton(m_retinaQuality);
    qualityGroup->addButton(m_normalQuality);
    form->addRow(QCoreApplication::translate("Localizable", "Image quality:"), m_retinaQuality);
    form->addRow(QString(), m_normalQuality);

    auto* delayRow = new QHBoxLayout;
    delayRow->setSpacing(8);
    m_delay = new PopUpButton(this);
    m_delay->setObjectName(QStringLiteral("delaySeconds"));
    m_delay->setItems(settings::delayMenuTitles());
    m_delay->setMinimumWidth(72);
    delayRow->addWidget(m_delay);
    delayRow->addWidget(new QLabel(QCoreApplication::translate("Localizable", "seconds"), this));
    delayRow->addStretch(1);
    auto* delayLabel =
        new QLabel(QCoreApplication::translate("Localizable", "D&elayed capture:"), this);
    delayLabel->setBuddy(m_delay);
    form->addRow(delayLabel, delayRow);
    m_speakDelay = new QCheckBox(
        QCoreApplication::translate("Localizable", "Spea&k the count, then play the sound"), this);
    m_speakDelay->setObjectName(QString(keys::playSoundWhenDelayScreenShots));
    form->addRow(QString(), m_speakDelay);
    form->addRow(rule(this));
    buildPictureControls(form);
    form->addRow(rule(this));
    buildShortcutRecorders(form);
    root->addLayout(form);
    root->addStretch(1);

    // Every control has an Alt mnemonic; tab order follows the layout.
    setTabOrder(m_startAtLogin, m_hideMenuBarIcon);
    setTabOrder(m_hideMenuBarIcon, m_playSound);
    setTabOrder(m_playSound, m_notify);
    setTabOrder(m_notify, m_savePath);
    setTabOrder(m_savePath, m_format);
    setTabOrder(m_format, m_retinaQuality);
    setTabOrder(m_retinaQuality, m_normalQuality);
    setTabOrder(m_normalQuality, m_delay);
    setTabOrder(m_delay, m_speakDelay);
    setTabOrder(m_speakDelay, m_needShadow);
    setTabOrder(m_needShadow, m_shadowSize);
    setTabOrder(m_shadowSize, m_shadowColour);
    setTabOrder(m_shadowColour, m_needFillet);
    setTabOrder(m_needFillet, m_doubleClickCopies);
    setTabOrder(m_doubleClickCopies, m_saveAndOpenModifier);
    setTabOrder(m_saveAndOpenModifier, m_appToOpen);
    QWidget* previous = m_appToOpen;
    for (ShortcutRecorder* recorder : m_shortcutRecorders) {
        setTabOrder(previous, recorder);
        previous = recorder;
    }
    setMinimumWidth(460);
}

void PreferencesWindow::buildPictureControls(QFormLayout* form)
{
    auto* shadowRow = new QHBoxLayout;
    shadowRow->setSpacing(8);
    m_needShadow =
        new QCheckBox(QCoreApplication::translate("Localizable", "Add a shado&w of"), this);
    m_needShadow->setObjectName(QString(keys::needShadowOfnotSingleWindow));
    shadowRow->addWidget(m_needShadow);
    m_shadowSize = new QSpinBox(this);
    m_shadowSize->setObjectName(QString(keys::sizeOfShadow));
    // The range the start-up check accepts.
    m_shadowSize->setRange(0, 100);
    m_shadowSize->setSuffix(QCoreApplication::translate("Localizable", " pt"));
    shadowRow->addWidget(m_shadowSize);
    m_shadowColour = new QPushButton(this);
    m_shadowColour->setObjectName(QString(keys::colorOfShadow));
    m_shadowColour->setToolTip(QCoreApplication::translate("Localizable", "Shadow colour"));
    shadowRow->addWidget(m_shadowColour);
    shadowRow->addStretch(1);
    form->addRow(QCoreApplication::translate("Localizable", "Pictures:"), shadowRow);

    m_needFillet = new QCheckBox(
        QCoreApplication::translate("Localizable", "&Round the corners of regions"), this);
    m_needFillet->setObjectName(QString(keys::needFilletOfnotSingleWindow));
    form->addRow(QString(), m_needFillet);

    m_doubleClickCopies = new QCheckBox(
        QCoreApplication::translate("Localizable", "Double-&click in a selection copies it"), this);
    m_doubleClickCopies->setObjectName(QString(keys::doubleClickToSavePaste));
    form->addRow(QString(), m_doubleClickCopies);

    auto* modifierRow = new QHBoxLayout;
    modifierRow->setSpacing(8);
    m_saveAndOpenModifier = new PopUpButton(this);
    m_saveAndOpenModifier->setObjectName(QString(keys::doubleClickModifierKey));
    QStringList shown;
    for (const ModifierChoice& choice : kModifierChoices)
        shown << QString::fromLatin1(choice.shown);
    m_saveAndOpenModifier->setItems(shown);
    m_saveAndOpenModifier->setMinimumWidth(80);
    modifierRow->addWidget(m_saveAndOpenModifier);
    modifierRow->addWidget(new QLabel(
        QCoreApplication::translate("Localizable", "tapped twice saves and opens the picture"),
        this));
    modifierRow->addStretch(1);
    auto* modifierLabel =
        new QLabel(QCoreApplication::translate("Localizable", "Save and open:"), this);
    modifierLabel->setBuddy(m_saveAndOpenModifier);
    form->addRow(modifierLabel, modifierRow);

    m_appToOpen = new PopUpButton(this);
    m_appToOpen->setObjectName(QStringLiteral("selectedAppName"));
    m_appToOpen->setMinimumWidth(200);
    m_appToOpen->setMaximumWidth(300);
    auto* appLabel = new QLabel(QCoreApplication::translate("Localizable", "Open &with:"), this);
    appLabel->setBuddy(m_appToOpen);
    form->addRow(appLabel, m_appToOpen);
}

void PreferencesWindow::connectPictureControls()
{
    // The switches stored as "YES" and "NO".
    const auto storeYesNo = [this](QCheckBox* box, settings::keys::Key key) {
        connect(box, &QCheckBox::clicked, this, [this, key](bool on) {
            settings::setYesNo(m_defaults, key, on);
            m_defaults.synchronize();
        });
    };
    storeYesNo(m_speakDelay, keys::playSoundWhenDelayScreenShots);
    storeYesNo(m_needShadow, keys::needShadowOfnotSingleWindow);
    storeYesNo(m_needFillet, keys::needFilletOfnotSingleWindow);
    storeYesNo(m_doubleClickCopies, keys::doubleClickToSavePaste);
    connect(m_needShadow, &QCheckBox::toggled, m_shadowSize, &QWidget::setEnabled);
    connect(m_needShadow, &QCheckBox::toggled, m_shadowColour, &QWidget::setEnabled);
    connect(m_shadowSize, &QSpinBox::valueChanged, this, [this](int points) {
        m_defaults.setObject(keys::sizeOfShadow, QString::number(points));
        m_defaults.synchronize();
    });
    connect(m_shadowColour, &QPushButton::clicked, this, &PreferencesWindow::chooseShadowColour);
    connect(m_saveAndOpenModifier, &PopUpButton::activated, this, [this](int index) {
        m_defaults.setObject(keys::doubleClickModifierKey,
                             QString::fromLatin1(kModifierChoices[index].stored));
        m_defaults.synchronize();
    });
    connect(m_appToOpen, &PopUpButton::activated, this, &PreferencesWindow::appToOpenChosen);
}

void PreferencesWindow::reloadPictureControls()
{
    m_speakDelay->setChecked(m_defaults.boolForKey(keys::playSoundWhenDelayScreenShots));
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

void PreferencesWindow::showShadowColour(const QColor& colour)
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

void PreferencesWindow::chooseShadowColour()
{
    const QColor current = core::shadowColourFrom(m_defaults.stringForKey(keys::colorOfShadow));
    const QColor chosen = m_chooseColour(this, current);
    if (!chosen.isValid())
        return;
    m_defaults.setObject(keys::colorOfShadow, chosen.name(QColor::HexArgb));
    m_defaults.synchronize();
    showShadowColour(chosen);
}

void PreferencesWindow::showAppToOpen()
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

void PreferencesWindow::appToOpenChosen(int index)
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

void PreferencesWindow::buildShortcutRecorders(QFormLayout* form)
{
    // One grid for all six, so the editors line up in one column whatever
    // the length of their names.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setColumnStretch(0, 1);
    int row = 0;
    for (const hotkeys::HotKeyDefinition& definition : hotkeys::hotKeyDefinitions()) {
        auto* recorder = new ShortcutRecorder(this);
        recorder->setObjectName(QString(definition.identifier));
        m_shortcutRecorders.push_back(recorder);
        auto* name = new QLabel(core::localized(definition.title), this);
        name->setBuddy(recorder);
        grid->addWidget(name, row, 0);
        grid->addWidget(recorder, row, 1);
        ++row;
    }
    form->addRow(core::localized("Hot keys:"), grid);
    m_hotKeyError = new QLabel(this);
    m_hotKeyError->setObjectName(QStringLiteral("hotKeyError"));
    m_hotKeyError->setWordWrap(true);
    m_hotKeyError->setMaximumWidth(300);
    {
        QPalette palette = m_hotKeyError->palette();
        palette.setColor(QPalette::WindowText, QColor(0xc0, 0x1c, 0x28));
        m_hotKeyError->setPalette(palette);
    }
    m_hotKeyError->hide();
    form->addRow(QString(), m_hotKeyError);
}

void PreferencesWindow::setShortcutEditing(hotkeys::ShortcutEditing* editing)
{
    m_shortcutEditing = editing;
}

void PreferencesWindow::showShortcuts()
{
    const QVariantMap table = m_defaults.dictionaryForKey(keys::shortcut);
    for (ShortcutRecorder* recorder : m_shortcutRecorders)
        recorder->setObjectValue(hotkeys::fromStoredForm(table.value(recorder->objectName())));
}

void PreferencesWindow::shortcutRecorded(ShortcutRecorder* recorder)
{
    if (m_shortcutEditing == nullptr)
        return;
    const auto value = recorder->objectValue();
    const auto status =
        m_shortcutEditing->shortcutRecorderDidEndRecording(recorder->objectName(), value);
    if (status == platform::HotKeyStatus::HeldByAnotherProgram && value) {
        m_hotKeyError->setText(core::localized("Another program already uses %1. Kelvo keeps it "
                                               "and takes it when that program lets it go.")
                                   .arg(hotkeys::glyphString(*value)));
        m_hotKeyError->show();
    } else if (status == platform::HotKeyStatus::UnknownKey && value) {
        m_hotKeyError->setText(core::localized("%1 cannot be typed on this keyboard.")
                                   .arg(hotkeys::glyphString(*value)));
        m_hotKeyError->show();
    } else {
        m_hotKeyError->hide();
    }
}

void PreferencesWindow::connectControls()
{
    for (ShortcutRecorder* recorder : m_shortcutRecorders) {
        connect(recorder, &ShortcutRecorder::didEndRecording, this,
                [this, recorder] { shortcutRecorded(recorder); });
        connect(recorder, &ShortcutRecorder::recordingChanged, this, [this](bool recording) {
            if (m_shortcutEditing != nullptr)
                m_shortcutEditing->setRecording(recording);
        });
    }
    connect(m_startAtLogin, &QCheckBox::clicked, this, &PreferencesWindow::startAtLoginClicked);
    connect(m_hideMenuBarIcon, &QCheckBox::clicked, this, [this](bool on) {
        settings::setYesNo(m_defaults, keys::hideMenuBarIcon, on);
        m_defaults.synchronize();
        Q_EMIT hideMenuBarIconChanged(m_defaults.boolForKey(keys::hideMenuBarIcon));
    });
    connect(m_playSound, &QCheckBox::clicked, this, [this](bool on) {
        m_defaults.setBool(keys::playSoundWhenScreenShots, on);
        m_defaults.synchronize();
    });
    connect(m_notify, &QCheckBox::clicked, this, [this](bool on) {
        m_defaults.setBool(keys::notifyWhenComplete, on);
        m_defaults.synchronize();
    });
    connect(m_savePath, &PopUpButton::activated, this, &PreferencesWindow::savePathChosen);
    connect(m_format, &PopUpButton::activated, this,
            [this] { settings::selectFormatOfSavePhoto(m_defaults, m_format->title()); });
    connect(m_delay, &PopUpButton::activated, this,
            [this] { settings::selectDelayTimesOfScreenShots(m_defaults, m_delay->title()); });
    connect(m_normalQuality, &QRadioButton::clicked, this,
            [this] { showQuality(settings::normalImageButtonClick(m_defaults)); });
    connect(m_retinaQuality, &QRadioButton::clicked, this,
            [this] { showQuality(settings::retinaImageButtonClick(m_defaults)); });
    connectPictureControls();
}

void PreferencesWindow::reloadFromDefaults()
{
    m_startAtLogin->setChecked(m_defaults.boolForKey(keys::autoStartAtLogin));
    m_hideMenuBarIcon->setChecked(m_defaults.boolForKey(keys::hideMenuBarIcon));
    m_playSound->setChecked(m_defaults.boolForKey(keys::playSoundWhenScreenShots));
    m_notify->setChecked(m_defaults.boolForKey(keys::notifyWhenComplete));
    m_format->setTitle(m_defaults.stringForKey(keys::formatOfSavePhoto));
    m_delay->setTitle(m_defaults.stringForKey(keys::timeOfDelayScreenshots));
    showQuality(settings::qualityButtons(m_defaults));
    reloadPictureControls();
    m_savePathMenu.rebuild();
    showSavePathMenu();
    showShortcuts();
}

void PreferencesWindow::showSavePathMenu()
{
    m_savePath->setItems(m_savePathMenu.titles());
    m_savePath->selectItem(m_savePathMenu.selectedIndex());
    m_savePath->setToolTip(m_savePathMenu.folder());
}

void PreferencesWindow::savePathChosen(int index)
{
    using Item = settings::SavePathMenu::Item;
    switch (static_cast<Item>(index)) {
    case Item::Folder:
        m_savePathMenu.resumePathofSaveScreenShotsPhoto();
        break;
    case Item::AskWhenSaving:
        m_savePathMenu.cancelPathofSaveScreenShotsPhoto();
        break;
    case Item::Other:
        m_savePathMenu.selectPathofSaveScreenShotsPhoto(m_chooseFolder(
            this, QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)));
        break;
    }
    showSavePathMenu();
}

void PreferencesWindow::showQuality(const settings::QualityButtons& buttons)
{
    m_normalQuality->setChecked(buttons.normalOn);
    m_retinaQuality->setChecked(buttons.retinaOn);
}

void PreferencesWindow::startAtLoginClicked(bool on)
{
    settings::setYesNo(m_defaults, keys::autoStartAtLogin, on);
    const bool wanted = m_defaults.boolForKey(keys::autoStartAtLogin);
    const bool done = wanted ? m_autostart.addToLoginItems() : m_autostart.removeFromLoginItems();
    if (done) {
        m_loginItemError->hide();
    } else {
        // The preference must say what will happen at the next login.
        settings::setYesNo(m_defaults, keys::autoStartAtLogin, !wanted);
        m_startAtLogin->setChecked(!wanted);
        m_loginItemError->setText(
            wanted ? QCoreApplication::translate("Localizable",
                                                 "Kelvo could not add itself to the programs "
                                                 "started at login.")
                   : QCoreApplication::translate("Localizable",
                                                 "Kelvo could not remove itself from the "
                                                 "programs started at login."));
        m_loginItemError->show();
        qWarning().noquote() << "kelvo:" << m_loginItemError->text();
    }
    m_defaults.synchronize();
}

void PreferencesWindow::mousePressEvent(QMouseEvent* event)
{
    // The window moves when dragged by its background, like a panel.
    if (event->button() == Qt::LeftButton && windowHandle()) {
        if (windowHandle()->startSystemMove()) {
            event->accept();
            return;
        }
    }
    QWidget::mousePressEvent(event);
}

} // namespace app
