// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/TextToSpeechSpeaker.h"

#include <QPointer>
#include <QTextStream>
#include <QTextToSpeech>
#include <QTimer>

#include <chrono>

namespace platform::linux_desktop {

namespace {

using namespace std::chrono_literals;

// What a text takes without a voice, and how long a voice may take to start
// or to finish before we stop waiting for it.
constexpr auto kSilentText = 1s;
constexpr auto kLongestText = 15s;

// One text on its way: answers once, when the engine is done with it or
// when it never started.
class Utterance final : public QObject
{
public:
    Utterance(QTextToSpeech& engine, std::function<void(bool)> done, QObject* parent)
        : QObject(parent)
        , m_done(std::move(done))
    {
        connect(&engine, &QTextToSpeech::stateChanged, this, [this](QTextToSpeech::State state) {
            if (state == QTextToSpeech::Speaking)
                m_started = true;
            else if (m_started || state == QTextToSpeech::Error)
                finish(state != QTextToSpeech::Error);
        });
        // An engine that takes the text but never speaks (no audio, a
        // daemon that does not answer) still lets the count go on.
        QTimer::singleShot(kSilentText, this, [this] {
            if (!m_started)
                finish(false);
        });
        QTimer::singleShot(kLongestText, this, [this] { finish(m_started); });
    }

private:
    void finish(bool spoken)
    {
        if (!m_done)
            return;
        auto done = std::move(m_done);
        m_done = {};
        deleteLater();
        done(spoken);
    }

    std::function<void(bool)> m_done;
    bool m_started = false;
};

} // namespace

TextToSpeechSpeaker::TextToSpeechSpeaker() = default;
TextToSpeechSpeaker::~TextToSpeechSpeaker() = default;

bool TextToSpeechSpeaker::hasVoice()
{
    if (!m_triedEngine) {
        m_triedEngine = true;
        if (!QTextToSpeech::availableEngines().isEmpty())
            m_engine = std::make_unique<QTextToSpeech>();
    }
    return m_engine && m_engine->state() != QTextToSpeech::Error;
}

void TextToSpeechSpeaker::say(const QString& text, std::function<void(bool spoken)> done)
{
    if (!hasVoice()) {
        sayNothing(std::move(done),
                   m_engine ? m_engine->errorString() : QStringLiteral("no text-to-speech engine"));
        return;
    }
    auto* utterance = new Utterance(*m_engine, std::move(done), &m_context);
    Q_UNUSED(utterance);
    m_engine->say(text);
}

void TextToSpeechSpeaker::sayNothing(std::function<void(bool spoken)> done, const QString& why)
{
    if (!m_toldNoVoice) {
        m_toldNoVoice = true;
        QTextStream(stderr) << "kelvo: cannot speak (" << why
                            << "); the count goes on in silence\n";
    }
    QTimer::singleShot(kSilentText, &m_context, [done = std::move(done)] {
        if (done)
            done(false);
    });
}

} // namespace platform::linux_desktop
