// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/ToolBarController.h"

#include "capture/logic/OverlayTips.h"
#include "core/Geometry.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/Startup.h"

namespace toolbar {

namespace keys = settings::keys;

ToolBarController::ToolBarController(ToolBarState& state, settings::Defaults& defaults,
                                     core::Clock& clock, QObject* parent)
    : QObject(parent)
    , m_state(state)
    , m_defaults(defaults)
    , m_view(
          std::make_unique<ToolBarView>([this] { return settings::shortcutOfButton(m_defaults); }))
    , m_hover(state, clock, *m_view)
    , m_mover(state, clock, [this] { m_view->place(m_state, m_shown); })
{
    m_hover.setColorTipTimes(
        [this] { return static_cast<int>(m_defaults.integerForKey(keys::tipTimes)); },
        [this](int times) {
            m_defaults.setInteger(keys::tipTimes, times);
            m_defaults.synchronize();
        });
    connect(m_view.get(), &ToolBarView::clicked, this, &ToolBarController::clicked);
    connect(m_view.get(), &ToolBarView::pointerMoved, this, &ToolBarController::hoverMoved);
    connect(m_view.get(), &ToolBarView::shortcutChosen, this,
            [this](const QString& key, const QString& text) {
                m_defaults.setObject(key, text);
                m_defaults.synchronize();
            });
    // The pointer may rest outside the bar while a menu is pulled down.
    connect(m_view.get(), &ToolBarView::menuClosed, this,
            [this] { m_state.popupButtonHaveOpened = true; });
}

ToolBarController::~ToolBarController()
{
    m_mover.stop();
    m_hover.stop();
}

void ToolBarController::attach(QWidget* overlay, bool updatesPin)
{
    m_view->attach(overlay);
    m_view->bar()->setUpdatesPin(updatesPin);
    m_windowSelection = false;
}

void ToolBarController::detach()
{
    m_hover.stop();
    m_mover.stop();
    m_shown = false;
    m_view->showLooks(m_state, false);
    m_view->detach();
}

void ToolBarController::place(const QRectF& selection)
{
    if (!attached())
        return;
    // The crop border's frame, in the window's points with y up.
    const QRectF frame = core::flipped(
        selection.adjusted(-kSelectionBand, -kSelectionBand, kSelectionBand, kSelectionBand),
        m_view->overlayHeight());
    m_state.resetButtonBox(placeBar(frame, m_view->overlayWidth()));
    m_hover.closeTipAtOnce();
}

void ToolBarController::refresh(bool canUndo, const BoxSettings& box)
{
    m_view->showLooks(m_state, canUndo);
    m_view->colorBox()->showTool(m_state.selectFunction, box);
    m_view->place(m_state, m_shown);
}

void ToolBarController::mouseMoved(QPointF global)
{
    QWidget* overlay = m_view->bar()->parentWidget();
    if (!attached() || overlay == nullptr)
        return;
    hoverMoved(core::flipped(overlay->mapFromGlobal(global), m_view->overlayHeight()));
}

void ToolBarController::hoverMoved(QPointF location)
{
    if (!m_shown)
        return;
    HoverContext context;
    context.clipToolbarWindowOpened = true;
    context.delaySeconds = m_defaults.doubleForKey(keys::delayTimeOfPopupToolbar);
    context.screenWidth = m_view->overlayWidth();
    // The slot starts at 0 with each window; only a move the hover looked
    // at tells which button the pointer is on.
    if (!m_hover.mouseMoved(location, context))
        return;

    // The words about the button under the pointer, in the overlay's corner.
    capture::ButtonTipInput in;
    in.mouseOnWhichButtonBox = m_state.mouseOnWhichButtonBox;
    in.onlyClipCurrentWindow = m_windowSelection;
    in.buttonBoxNeedHidden = m_state.buttonBoxNeedHidden;
    in.tipHidden = !m_view->buttonTip()->isVisible();
    in.tipsBoxIsOpening = m_state.tipsBoxIsOpening;
    in.shownText = m_view->buttonTip()->text();
    if (const std::optional<capture::TipChange> tip = capture::buttonTip(in))
        m_view->setButtonTip(tip->kind == capture::TipChange::Kind::Show ? tip->text : QString());
}

void ToolBarController::flagsChanged(Qt::KeyboardModifiers held, const QWidget* overlay)
{
    if (!m_shown || overlay == nullptr || m_view->bar()->parentWidget() != overlay)
        return;
    const bool doubleTapIsControl =
        m_defaults.stringForKey(keys::doubleClickModifierKey) == QLatin1StringView("Control");
    m_mover.flagsChanged(held, doubleTapIsControl, [this] { m_hover.disableTips(); });
}

} // namespace toolbar
