// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Speaker.h"

#include <QObject>

#include <memory>

class QTextToSpeech;

namespace platform::linux_desktop {

// Speech through Qt's text-to-speech (speech-dispatcher on Linux). Where no
// engine answers, each text is a second of silence, and stderr says once
// why nothing is heard.
class TextToSpeechSpeaker final : public Speaker
{
public:
    TextToSpeechSpeaker();
    ~TextToSpeechSpeaker() override;

    void say(const QString& text, std::function<void(bool spoken)> done) override;

private:
    [[nodiscard]] bool hasVoice();
    void sayNothing(std::function<void(bool spoken)> done, const QString& why);

    std::unique_ptr<QTextToSpeech> m_engine; // made at the first text
    bool m_triedEngine = false;
    bool m_toldNoVoice = false;
    QObject m_context; // pending answers go with the speaker
};

} // namespace platform::linux_desktop
