// SPDX-License-Identifier: GPL-3.0-or-later
#include "colour/ui/ColorKeyHandler.h"
#include "colour/ui/CustomColorFormatDialog.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <functional>
#include <vector>

using namespace colour;

namespace {

struct Recorder
{
    QStringList events;
    std::optional<QString> answer;
    std::vector<std::function<void()>> later;

    ColorKeyHost host()
    {
        return {[this] { events << QStringLiteral("cancel"); },
                [this](const QString& f) { events << QStringLiteral("store ") + f; },
                [this] {
                    events << QStringLiteral("ask");
                    return answer;
                },
                [this](std::function<void()> task) {
                    events << QStringLiteral("later");
                    later.push_back(std::move(task));
                }};
    }

    // What the event loop does once the key's handling has returned.
    void runLater()
    {
        auto tasks = std::move(later);
        later.clear();
        for (auto& task : tasks)
            task();
    }
};

ColorReadoutState readColour()
{
    ColorReadoutState state;
    state.rgbOfColor = QStringLiteral("200,30,60");
    state.hexOfColor = QStringLiteral("#C81E3C");
    return state;
}

} // namespace

TEST(ColorKeyHandler, RAndHPutTheColourOnTheClipboardThenEndTheCapture)
{
    QClipboard& clipboard = *QGuiApplication::clipboard();
    const ColorReadoutState state = readColour();
    Recorder r;
    EXPECT_TRUE(
        handleColorKey(Qt::Key_R, Qt::NoModifier, state, std::nullopt, clipboard, r.host()));
    EXPECT_EQ(clipboard.text(), QStringLiteral("200,30,60"));
    EXPECT_TRUE(
        handleColorKey(Qt::Key_H, Qt::ShiftModifier, state, std::nullopt, clipboard, r.host()));
    EXPECT_EQ(clipboard.text(), QStringLiteral("#C81E3C"));
    EXPECT_EQ(r.events, (QStringList{QStringLiteral("cancel"), QStringLiteral("cancel")}));

    // Nothing read yet: the clipboard is emptied all the same.
    clipboard.setText(QStringLiteral("old"));
    EXPECT_TRUE(handleColorKey(Qt::Key_R, Qt::NoModifier, ColorReadoutState{}, std::nullopt,
                               clipboard, r.host()));
    EXPECT_TRUE(clipboard.text().isEmpty());
}

TEST(ColorKeyHandler, ZCopiesTheCustomFormatAndShiftZAsksAfterTheCaptureHasGone)
{
    QClipboard& clipboard = *QGuiApplication::clipboard();
    const ColorReadoutState state = readColour();
    const std::optional<QString> format = QStringLiteral("_R/_G/_B/_R");
    Recorder r;
    EXPECT_TRUE(handleColorKey(Qt::Key_Z, Qt::NoModifier, state, format, clipboard, r.host()));
    EXPECT_EQ(clipboard.text(), QStringLiteral("200/30/60/200"));
    EXPECT_EQ(r.events, QStringList{QStringLiteral("cancel")});

    // The dialog is asked for only after the key's handling has returned,
    // never from inside it.
    r.events.clear();
    r.answer = QStringLiteral("(_R _G _B)");
    EXPECT_TRUE(handleColorKey(Qt::Key_Z, Qt::ShiftModifier, state, format, clipboard, r.host()));
    EXPECT_EQ(r.events, (QStringList{QStringLiteral("cancel"), QStringLiteral("later")}));
    r.runLater();
    EXPECT_EQ(r.events, (QStringList{QStringLiteral("cancel"), QStringLiteral("later"),
                                     QStringLiteral("ask"), QStringLiteral("store (_R _G _B)")}));

    // A fresh install has no format: plain Z asks too; a cancelled dialog
    // stores nothing.
    r.events.clear();
    r.answer.reset();
    EXPECT_TRUE(
        handleColorKey(Qt::Key_Z, Qt::NoModifier, state, std::nullopt, clipboard, r.host()));
    EXPECT_EQ(r.events, (QStringList{QStringLiteral("cancel"), QStringLiteral("later")}));
    r.runLater();
    EXPECT_EQ(r.events, (QStringList{QStringLiteral("cancel"), QStringLiteral("later"),
                                     QStringLiteral("ask")}));
}

TEST(ColorKeyHandler, OtherKeysAreLeftAlone)
{
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setText(QStringLiteral("kept"));
    const ColorReadoutState state = readColour();
    Recorder r;
    const std::optional<QString> format = QStringLiteral("_R_G_B");
    EXPECT_FALSE(handleColorKey(Qt::Key_F, Qt::NoModifier, state, format, clipboard, r.host()));
    EXPECT_FALSE(
        handleColorKey(Qt::Key_Z, Qt::ControlModifier, state, format, clipboard, r.host()));
    EXPECT_FALSE(handleColorKey(Qt::Key_Z, Qt::NoModifier, ColorReadoutState{}, format, clipboard,
                                r.host()));
    EXPECT_EQ(clipboard.text(), QStringLiteral("kept"));
    EXPECT_TRUE(r.events.isEmpty());
}

TEST(CustomColorFormatDialog, StartsFromTheTemplateAndStoresOnlyCompleteFormats)
{
    CustomColorFormatDialog dialog;
    EXPECT_EQ(
        dialog.formatField()->text(),
        QStringLiteral("[NSColor colorWithRed:_R/255.0 green:_G/255.0 blue:_B/255.0 alpha:1.0];"));
    EXPECT_EQ(dialog.messageLabel()->text(), formatDialogMessage());
    EXPECT_EQ(dialog.okButton()->text(), QStringLiteral("OK"));
    EXPECT_EQ(dialog.cancelButton()->text(), QStringLiteral("Cancel"));
    EXPECT_EQ(dialog.formatField()->width(), 580);
    EXPECT_GE(dialog.width(), 700);
    EXPECT_GE(dialog.height(), 125);

    dialog.okButton()->click();
    EXPECT_EQ(dialog.resultCode(), 1000);
    EXPECT_EQ(dialog.formatToStore(), dialog.formatField()->text());

    dialog.formatField()->setText(QStringLiteral("_R,_G"));
    dialog.okButton()->click();
    EXPECT_EQ(dialog.formatToStore(), std::nullopt);

    dialog.formatField()->setText(QStringLiteral("_R,_G,_B"));
    dialog.cancelButton()->click();
    EXPECT_NE(dialog.resultCode(), 1000);
    EXPECT_EQ(dialog.formatToStore(), std::nullopt);
}
