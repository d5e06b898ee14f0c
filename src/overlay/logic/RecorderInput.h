// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace overlay {

// What the overlay asks of the recorder whose region it may serve.
class RecorderInput
{
public:
    virtual ~RecorderInput() = default;

    // The overlay serves a recording region.
    [[nodiscard]] virtual bool isRecordingOverlay() const = 0;
    // The region has its recording tool bar.
    [[nodiscard]] virtual bool toolbarViewOpend() const = 0;
    // The pointer rests on the recording tool bar's start button.
    [[nodiscard]] virtual bool mouseInButtonOfRecordScreen() const = 0;
    // The recording runs.
    [[nodiscard]] virtual bool realStartRecordingScreen() const = 0;
};

} // namespace overlay
