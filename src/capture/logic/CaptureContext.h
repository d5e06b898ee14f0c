// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "capture/logic/CaptureState.h"

namespace capture {

// The state that the objects of a capture share, made once by the
// application and handed to each of them: the manager, the per-screen
// controllers and views, the tool bar and the hot-key actions. It holds one
// state object per concern, each reached by its own accessor, so that an
// object that needs one of them does not see the others' fields; the
// strokes, the tool bar's state and a scrolling capture's state come here
// beside the capture's own. Main thread only.
class CaptureContext
{
public:
    CaptureContext() = default;
    CaptureContext(const CaptureContext&) = delete;
    CaptureContext& operator=(const CaptureContext&) = delete;

    // The flags and lists of the capture itself: its windows, picks,
    // selection and finish.
    [[nodiscard]] CaptureState& capture() { return m_capture; }
    [[nodiscard]] const CaptureState& capture() const { return m_capture; }

private:
    CaptureState m_capture;
};

} // namespace capture
