// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/AnnotatedImageController.h"

#include "capture/logic/CaptureContext.h"
#include "core/Clock.h"
#include "core/MessageBus.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/PreferenceActions.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/ToolRegistry.h"
#include "toolbar/ui/ClipToolBar.h"

#include <QWidget>

#include <chrono>

namespace toolbar {

namespace keys = settings::keys;

AnnotatedImageController::AnnotatedImageController(capture::CaptureContext& context,
                                                   settings::Defaults& defaults,
                                                   core::MessageBus& bus, core::Clock& clock,
                                                   QObject* parent)
    : QObject(parent)
    , m_state(context.capture())
    , m_defaults(defaults)
    , m_bus(bus)
    , m_clock(clock)
{}

AnnotatedImageController::~AnnotatedImageController()
{
    delete m_bar.data();
}

void AnnotatedImageController::windowDidLoad()
{
    m_loaded = true;
    m_state.clipToolbarWindowOpened = true;
    userCanceled = true;
    m_dataOfUsers.getUsersData(m_defaults);
    makeExclusivePairsSane();
    connect(&m_bus, &core::MessageBus::hiddenButtonOfClipToolbarWindow, this,
            &AnnotatedImageController::hiddenButton);
    connect(&m_bus, &core::MessageBus::unhiddenButtonOfClipToolbarWindow, this,
            &AnnotatedImageController::unhiddenButton);
    connect(&m_bus, &core::MessageBus::closeClipToolbarWindow, this,
            &AnnotatedImageController::closeWindow);
    connect(&m_defaults, &settings::Defaults::changed, this,
            &AnnotatedImageController::observeValueForKeyPath);
}

void AnnotatedImageController::makeExclusivePairsSane()
{
    settings::makeExclusivePairsSane(m_defaults);
}

void AnnotatedImageController::openWindow(QWidget* overlay, std::function<QRectF()> selection)
{
    if (!m_loaded)
        windowDidLoad();
    m_selection = std::move(selection);
    if (m_bar == nullptr) {
        m_bar = new ClipToolBar();
        connect(m_bar, &ClipToolBar::clicked, this, [this](const QString& name) {
            if (const ToolEntry* entry = toolNamed(name))
                chooseTool(*entry);
        });
    }
    m_bar->setParent(overlay);
    m_bar->setUpdatesPin(m_state.annotatedOnMap);

    m_state.finish.clear();
    m_state.clipToolbarWindowOpened = true;
    m_state.startScreenShot = false;
    resetButtonBox();
    unhiddenButton();
}

void AnnotatedImageController::closeWindow()
{
    m_state.annotatedOnMapFromRightMouse = false;
    m_state.annotatedOnMap = false;
    // The tools' settings reach the disk here, all at once.
    if (m_state.clipToolbarWindowOpened && m_loaded)
        m_dataOfUsers.store(m_defaults);
    m_state.clipToolbarWindowOpened = false;
    if (m_bar != nullptr) {
        m_bar->hide();
        // Off the overlay, which goes back to its pool.
        m_bar->setParent(nullptr);
    }
    m_selection = nullptr;
    // A pin's finish may still ask where it goes in this turn of the loop.
    m_clock.singleShot(std::chrono::milliseconds(100), this,
                       [this] { m_state.finish.forgetPin(); });
}

void AnnotatedImageController::resetButtonBox()
{
    if (m_bar == nullptr || m_bar->parentWidget() == nullptr || !m_selection)
        return;
    const QRectF box = placeButtonBox(m_selection(), m_bar->parentWidget()->size());
    m_bar->move(box.topLeft().toPoint());
}

void AnnotatedImageController::hiddenButton()
{
    if (m_bar != nullptr)
        m_bar->hide();
}

void AnnotatedImageController::unhiddenButton()
{
    if (m_bar == nullptr || m_bar->parentWidget() == nullptr)
        return;
    resetButtonBox();
    m_bar->show();
    m_bar->raise();
}

void AnnotatedImageController::startFinish()
{
    m_state.startScreenShot = true;
    m_state.screenShotIsFinished = false;
    m_bus.post(core::Message::StartScreenShots);
    hiddenButton();
}

void AnnotatedImageController::saveButtonClick()
{
    m_state.finish.save();
    startFinish();
}

void AnnotatedImageController::copyToPasteButtonClick()
{
    m_state.finish.copy();
    startFinish();
}

void AnnotatedImageController::mapButtonClick()
{
    m_state.finish.pin();
    startFinish();
}

void AnnotatedImageController::chooseTool(const ToolEntry& entry)
{
    switch (entry.id) {
    case ToolId::Save:
        saveButtonClick();
        break;
    case ToolId::CopyToPaste:
        copyToPasteButtonClick();
        break;
    case ToolId::Map:
        mapButtonClick();
        break;
    case ToolId::Cancel:
        cancelButtonClick();
        break;
    default:
        // The drawing tools and the scrolling capture come with their own
        // parts of the mark-up.
        break;
    }
}

bool AnnotatedImageController::shortcutTyped(const overlay::ClipKeyEvent& event,
                                             const overlay::ShortcutContext& context)
{
    const ToolEntry* entry = chooseByShortcut(event.key, event.text, context.shortcutOfButton,
                                              context.scrolling, context.windowSelection);
    if (entry == nullptr)
        return false;
    chooseTool(*entry);
    return entry->can(can::EndPendingMove);
}

void AnnotatedImageController::cancelButtonClick()
{
    m_bus.post(core::Message::CancelScreenShot);
}

bool AnnotatedImageController::barContains(QPoint global) const
{
    return m_bar != nullptr && m_bar->isVisible() &&
           m_bar->rect().contains(m_bar->mapFromGlobal(global));
}

void AnnotatedImageController::observeValueForKeyPath(const QString& key, const QVariant&)
{
    struct Pair
    {
        QLatin1StringView key, partner, stored;
    };
    static const Pair pairs[] = {
        {keys::selectedMosaic, keys::selectedGaussianBlured, keys::selectedMosaic},
        {keys::selectedGaussianBlured, keys::selectedMosaic, keys::selectedMosaic},
        {keys::squareOfHighlight, keys::ellipseOfHighlight, keys::squareOfHighlight},
        {keys::ellipseOfHighlight, keys::squareOfHighlight, keys::squareOfHighlight},
    };
    for (const Pair& pair : pairs) {
        if (key != pair.key)
            continue;
        // Our own write of the partner comes back here once; let it pass.
        if (adjustByApp) {
            adjustByApp = false;
            return;
        }
        adjustByApp = true;
        m_defaults.setBool(pair.partner, false);
        m_defaults.synchronize();
        return;
    }
    // The tool short cuts are followed by the live table
    // (settings::ShortcutOfButton), from the start on, not only once this
    // window has loaded.
}

} // namespace toolbar
