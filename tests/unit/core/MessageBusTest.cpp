// SPDX-License-Identifier: GPL-3.0-or-later
// The message bus: posted messages come later and in order, sent ones at
// once, each on its own signal, and the names stay the system's.
#include "core/MessageBus.h"
#include "support/BusRecorder.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

using core::Message;
using core::MessageBus;
using Names = std::vector<std::string>;

namespace {

class MessageBusTest : public ::testing::Test
{
protected:
    MessageBusTest()
    {
        if (QCoreApplication::instance() == nullptr)
            m_app = std::make_unique<QCoreApplication>(m_argc, m_argv);
        // What each typed signal delivered, in arrival order.
        QObject::connect(&bus, &MessageBus::startScreenShots, [this] { seen.push_back("start"); });
        QObject::connect(&bus, &MessageBus::cancelScreenShot, [this] { seen.push_back("cancel"); });
        QObject::connect(&bus, &MessageBus::startAnnotation,
                         [this] { seen.push_back("annotate"); });
        QObject::connect(&bus, &MessageBus::closeClipToolbarWindow,
                         [this] { seen.push_back("close"); });
    }

    static void turnEventLoop() { QCoreApplication::processEvents(); }

    MessageBus bus;
    std::vector<std::string> seen;

private:
    int m_argc = 1;
    char m_name[8] = "test";
    char* m_argv[2] = {m_name, nullptr};
    std::unique_ptr<QCoreApplication> m_app;
};

TEST_F(MessageBusTest, PostedMessagesArriveLaterAndInTheOrderPosted)
{
    bus.post(Message::CancelScreenShot);
    bus.post(Message::StartAnnotation);
    bus.post(Message::StartScreenShots);
    bus.post(Message::CancelScreenShot);
    EXPECT_TRUE(seen.empty()) << "a posted message was delivered inside post()";
    turnEventLoop();
    EXPECT_EQ(seen, (Names{"cancel", "annotate", "start", "cancel"}));
}

TEST_F(MessageBusTest, AMessagePostedByAHandlerWaitsUntilThatHandlerHasReturned)
{
    // The handler posts, then goes on: the posted message must not run
    // inside it, even when the loop is already delivering.
    bool insideHandler = false;
    QObject::connect(&bus, &MessageBus::startAnnotation, [&] {
        insideHandler = true;
        bus.post(Message::CancelScreenShot);
        seen.push_back("annotate-done");
        insideHandler = false;
    });
    bool cancelledInsideHandler = false;
    QObject::connect(&bus, &MessageBus::cancelScreenShot,
                     [&] { cancelledInsideHandler = cancelledInsideHandler || insideHandler; });
    bus.post(Message::StartAnnotation);
    bus.post(Message::StartScreenShots);
    for (int i = 0; i < 3; ++i)
        turnEventLoop();
    EXPECT_FALSE(cancelledInsideHandler);
    // The one posted from inside comes after those posted before it.
    EXPECT_EQ(seen, (Names{"annotate", "annotate-done", "start", "cancel"}));
}

TEST_F(MessageBusTest, SentMessagesArriveAtOnceAheadOfPostedOnes)
{
    bus.post(Message::StartAnnotation);
    bus.send(Message::CancelScreenShot);
    EXPECT_EQ(seen, Names{"cancel"});
    bus.send(Message::CloseClipToolbarWindow);
    EXPECT_EQ(seen, (Names{"cancel", "close"}));
    turnEventLoop();
    EXPECT_EQ(seen, (Names{"cancel", "close", "annotate"}));
}

TEST(MessageBus, EachMessageReachesItsOwnSignalOnly)
{
    MessageBus bus;
    BusRecorder seen(bus);
    ASSERT_EQ(seen.watched(), static_cast<int>(Message::SelectedChanged) + 1);
    for (int i = 0; i <= static_cast<int>(Message::SelectedChanged); ++i) {
        const auto message = static_cast<Message>(i);
        seen.names.clear();
        bus.send(message);
        EXPECT_EQ(seen.names, QStringList{QString::fromLatin1(MessageBus::nameOf(message))});
    }
}

TEST(MessageBus, NamesAreTheSystemsOwnAndDistinct)
{
    EXPECT_STREQ(MessageBus::nameOf(Message::StartScreenShots), "StartScreenShots");
    EXPECT_STREQ(MessageBus::nameOf(Message::CancelScreenShot), "cancelScreenShot");
    EXPECT_STREQ(MessageBus::nameOf(Message::UnhiddenButtonOfClipToolbarWindow),
                 "unhiddenButtonOfClipToolbarWindow");
    std::set<std::string> names;
    for (int i = 0; i <= static_cast<int>(Message::SelectedChanged); ++i)
        names.insert(MessageBus::nameOf(static_cast<Message>(i)));
    EXPECT_EQ(names.size(), static_cast<std::size_t>(Message::SelectedChanged) + 1);
}

} // namespace
