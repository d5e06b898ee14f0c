// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/prefs/PreferencesWindow.h"

#include "app/hotkeys/HotKeyTable.h"
#include "app/hotkeys/KeyComboCodec.h"
#include "app/hotkeys/ShortcutEditing.h"
#include "app/prefs/PictureSettings.h"
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
    , m_pictures(new PictureSettings(defaults, this))
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
    m_pictures->setColourChooser(std::move(chooser));
}

void PreferencesWindow::setImageApplications(std::vector<platform::Application> applications)
{
    m_pictures->setImageApplications(std::move(applications));
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
    m_pictures->addRows(form);
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
    QWidget* previous = m_pictures->chainTabOrder(m_speakDelay);
    for (ShortcutRecorder* recorder : m_shortcutRecorders) {
        setTabOrder(previous, recorder);
        previous = recorder;
    }
    setMinimumWidth(460);
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
    connect(m_speakDelay, &QCheckBox::clicked, this, [this](bool on) {
        settings::setYesNo(m_defaults, keys::playSoundWhenDelayScreenShots, on);
        m_defaults.synchronize();
    });
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
    m_speakDelay->setChecked(m_defaults.boolForKey(keys::playSoundWhenDelayScreenShots));
    m_pictures->reload();
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
