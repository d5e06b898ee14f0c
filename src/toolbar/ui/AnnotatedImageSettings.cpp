// SPDX-License-Identifier: GPL-3.0-or-later
// The annotation window's settings box: dots, text sizes, swatches, the own colour's panel and the
// shape options.
#include "annotation/logic/StrokeCoverage.h"
#include "annotation/logic/StrokeEdit.h"
#include "annotation/logic/StrokeHitTest.h"
#include "annotation/render/StrokePainter.h"
#include "annotation/ui/AnnotatedImageView.h"
#include "annotation/ui/GKCropBorderView.h"
#include "capture/logic/CaptureContext.h"
#include "core/Clock.h"
#include "core/Geometry.h"
#include "core/Localized.h"
#include "core/MessageBus.h"
#include "platform/DesktopNotifier.h"
#include "settings/Defaults.h"
#include "settings/Keys.h"
#include "settings/PreferenceActions.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/SettingsBox.h"
#include "toolbar/logic/ToolCursor.h"
#include "toolbar/logic/ToolRegistry.h"
#include "toolbar/logic/ToolTraits.h"
#include "toolbar/ui/AnnotatedImageController.h"
#include "toolbar/ui/ClipToolBar.h"
#include "toolbar/ui/ColorAlphaBox.h"
#include "toolbar/ui/SettingsBoxView.h"
#include <QPixmap>
#include <QWidget>
#include <algorithm>
#include <chrono>

namespace toolbar {

namespace keys = settings::keys;

// The settings box.

void AnnotatedImageController::connectSettingsBox()
{
    SettingsBoxView* box = m_bar->view().colorBox();
    connect(box, &SettingsBoxView::sizeDotClicked, this,
            &AnnotatedImageController::sizeButtonClick);
    connect(box, &SettingsBoxView::swatchClicked, this,
            &AnnotatedImageController::selectColorButtonClick);
    connect(box, &SettingsBoxView::userSwatchRightClicked, this,
            &AnnotatedImageController::showPicker);
    connect(box, &SettingsBoxView::textSizeChosen, this,
            &AnnotatedImageController::selectSizeButtonClick);
    connect(box, &SettingsBoxView::optionClicked, this,
            &AnnotatedImageController::optionButtonClick);
    connect(&m_colorPanel, &UserColorPanel::colorChanged, this,
            &AnnotatedImageController::colorChanged);
}

QColor AnnotatedImageController::userColorOf(const QString& tool) const
{
    return storedUserColor(m_defaults.dictionaryForKey(QString(keys::DataOfUsers)), tool);
}

BoxSettings AnnotatedImageController::boxSettings() const
{
    const QString& tool = m_toolBar.selectFunction;
    // Text views come with the text tools' own layer; until then no text
    // has a font size of its own.
    BoxSettings box =
        settingsToShow(m_dataOfUsers, tool, m_strokes.dicOfCurrentStroke, userColorOf(tool));
    for (const QLatin1StringView key : shapeOptions(tool))
        box.options.push_back(m_defaults.boolForKey(key));
    return box;
}

void AnnotatedImageController::optionButtonClick(int option)
{
    const std::vector<QLatin1StringView> options = shapeOptions(m_toolBar.selectFunction);
    if (option < 0 || option >= static_cast<int>(options.size()))
        return;
    // The preference's change notice brings it to the active stroke.
    const QLatin1StringView key = options[static_cast<std::size_t>(option)];
    m_defaults.setBool(key, !m_defaults.boolForKey(key));
    m_defaults.synchronize();
    refreshBar();
}

void AnnotatedImageController::sizeButtonClick(int dot)
{
    const QString tool = m_toolBar.selectFunction;
    const std::optional<int> size = sizeOfDotClick(tool, dot);
    if (tool.isEmpty() || !size)
        return;
    m_dataOfUsers.setValue(tool, QStringLiteral("size"), *size);
    refreshBoxSizeAndDrawRect(tool);
}

void AnnotatedImageController::selectSizeButtonClick(const QString& title)
{
    const QString tool = m_toolBar.selectFunction;
    if (tool.isEmpty())
        return;
    // Kept as the menu's text; the active text's font follows once text
    // views exist, never the stroke's own "size".
    m_dataOfUsers.setValue(tool, QStringLiteral("size"), title);
    refreshBar();
    if (m_imageView != nullptr)
        m_imageView->update();
}

void AnnotatedImageController::selectColorButtonClick(int swatch)
{
    const QString tool = m_toolBar.selectFunction;
    if (tool.isEmpty() || swatch < 1 || swatch > 6)
        return;
    if (swatch <= 5) {
        m_dataOfUsers.setValue(tool, QStringLiteral("color"),
                               colorText(swatchColors()[static_cast<std::size_t>(swatch - 1)]));
        refreshBoxSizeAndDrawRect(tool);
        return;
    }
    if (const QColor own = userColorOf(tool); own.isValid()) {
        m_dataOfUsers.setValue(tool, QStringLiteral("color"), colorText(own));
        refreshBoxSizeAndDrawRect(tool);
        return;
    }
    // Nothing to take yet: say how to choose one, and change nothing.
    if (m_notifier != nullptr)
        m_notifier->notify({.title = core::localized("This color needs to be customized"),
                            .body = core::localized("RightMouse click, please"),
                            .filePath = {},
                            .withSound = true});
}

void AnnotatedImageController::showPicker()
{
    if (!m_bar || !m_state.clipToolbarWindowOpened || m_toolBar.selectFunction.isEmpty())
        return;
    const SettingsBoxView* box = m_bar->view().colorBox();
    QWidget* overlay = box->parentWidget();
    if (overlay == nullptr)
        return;
    const QRect anchor(box->mapToGlobal(QPoint(0, 0)), box->size());
    const QColor own = userColorOf(m_toolBar.selectFunction);
    m_colorPanel.open(overlay, anchor, own.isValid() ? own : boxSettings().color);
}

void AnnotatedImageController::colorChanged(const QColor& color)
{
    const QString tool = m_toolBar.selectFunction;
    // A late change from a panel whose capture has ended goes nowhere.
    if (!color.isValid() || tool.isEmpty() || !m_state.clipToolbarWindowOpened)
        return;
    const QString text = colorText(color);
    m_dataOfUsers.setValue(tool, QStringLiteral("userColor"), text);
    m_dataOfUsers.setValue(tool, QStringLiteral("color"), text);
    m_defaults.setObject(QString(keys::userColor), text);
    // Saved at once: swatch 6 reads the saved colour back.
    m_dataOfUsers.store(m_defaults);
    refreshBoxSizeAndDrawRect(tool);
}

void AnnotatedImageController::refreshBoxSizeAndDrawRect(const QString& tool)
{
    const QColor color = m_dataOfUsers.color(tool);
    const int size = m_dataOfUsers.size(tool);
    refreshBar();
    if (const std::optional<int> type = applyToActiveStroke(m_strokes, color, size)) {
        switch (refreshAfterChange(*type)) {
        case StrokeRefresh::Mosaic:
            m_bus.post(core::Message::RefreshMosaicDrawRect);
            break;
        case StrokeRefresh::HighlightAndMosaic:
            m_bus.post(core::Message::RefreshHighlightDrawRect);
            m_bus.post(core::Message::RefreshMosaicDrawRect);
            break;
        case StrokeRefresh::ImageView:
            if (m_imageView != nullptr)
                m_imageView->update();
            break;
        }
        // The change is an undo step: the undo button may wake.
        refreshBar();
    }
    resetCursor();
}

} // namespace toolbar
