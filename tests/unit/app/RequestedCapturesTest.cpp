// SPDX-License-Identifier: GPL-3.0-or-later
// The course of a requested capture on a clock the test steps: when it
// starts, what refuses it, and that each request ends exactly once, with
// the right answer, whether it finishes, is cancelled, fails to start or
// ends without a picture.
#include "app/RequestedCaptures.h"
#include "support/SteppedClock.h"

#include <gtest/gtest.h>

#include <vector>

using app::CaptureRequest;
using app::RequestedCaptures;
using app::output::SaveResult;
using std::chrono::milliseconds;

namespace {

// One end as it would be broadcast on the bus.
struct End
{
    enum class Kind
    {
        Done,
        Cancelled,
        Failed,
    };
    Kind kind;
    uint id;
    QString text; // the path or the error
    bool operator==(const End&) const = default;
};

void PrintTo(const End& end, std::ostream* os)
{
    static const char* const kinds[] = {"done", "cancelled", "failed"};
    *os << kinds[static_cast<int>(end.kind)] << '(' << end.id << ", \"" << end.text.toStdString()
        << "\")";
}

core::Picture picture(int w = 8, int h = 6)
{
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(Qt::red);
    return core::Picture::pixelsAsPoints(image);
}

CaptureRequest toPath(const QString& path, int delayMs = 0)
{
    CaptureRequest r;
    r.path = path;
    r.delayMs = delayMs;
    return r;
}

class Requests : public ::testing::Test
{
protected:
    RequestedCaptures& requests()
    {
        if (!m_requests) {
            RequestedCaptures::Services s;
            s.clock = &clock;
            s.captureRunning = [this] { return overlayUp; };
            s.startCapture = [this] {
                ++starts;
                // A modal dialog keeps the overlay from coming up.
                if (!modalDialogOpen)
                    overlayUp = true;
            };
            s.canSeeDesktop = [this] { return canSeeDesktop; };
            s.asksForSavePath = [this] { return asksForSavePath; };
            s.pictureOfPreviousArea = [this](QString* error) {
                if (previousArea.isNull())
                    *error = QStringLiteral("there is no previous area");
                return previousArea;
            };
            s.copy = [this](const core::Picture& p) { copied.push_back(p.pixels.size()); };
            s.saveTo = [this](const core::Picture& p, const QString& target) {
                savedTo.push_back(target);
                return saveResult(p, target);
            };
            s.saveToFile = [this](const core::Picture& p) {
                ++savedToFile;
                return saveResult(p, QStringLiteral("/saves"));
            };
            s.done = [this](uint id, const QString& path) {
                ends.push_back({End::Kind::Done, id, path});
            };
            s.cancelled = [this](uint id) { ends.push_back({End::Kind::Cancelled, id, {}}); };
            s.failed = [this](uint id, const QString& error) {
                ends.push_back({End::Kind::Failed, id, error});
            };
            s.report = [this](const QString& line) { reported << line; };
            m_requests = std::make_unique<RequestedCaptures>(std::move(s));
        }
        return *m_requests;
    }

    SaveResult saveResult(const core::Picture& p, const QString& target) const
    {
        if (!saveFails.isEmpty())
            return {{}, saveFails, keptAt};
        return {QStringLiteral("%1/shot-%2x%3.png")
                    .arg(target)
                    .arg(p.pixels.width())
                    .arg(p.pixels.height()),
                {},
                {}};
    }

    // The overlay ends as the user ends it; a finish hands its picture on.
    void userCancels()
    {
        overlayUp = false;
        requests().captureEnded(false);
    }
    bool userFinishes(const core::Picture& p, const std::function<SaveResult()>& finish)
    {
        overlayUp = false;
        requests().captureEnded(true);
        return requests().takeFinishedCapture(p, finish);
    }

    SteppedClock clock;
    bool overlayUp = false;
    bool modalDialogOpen = false;
    bool canSeeDesktop = true;
    bool asksForSavePath = false;
    core::Picture previousArea;
    QString saveFails; // the error every save answers, when set
    QString keptAt;
    int starts = 0;
    int savedToFile = 0;
    std::vector<QSize> copied;
    QStringList savedTo;
    std::vector<End> ends;
    QStringList reported;

private:
    std::unique_ptr<RequestedCaptures> m_requests;
};

SaveResult notCalled()
{
    ADD_FAILURE() << "the finish's own destination was used";
    return {};
}

} // namespace

TEST_F(Requests, ACaptureStartsAfterItsDelayAndNeverInsideTheCall)
{
    EXPECT_EQ(requests().start(1, toPath(QStringLiteral("/shots"), 1500)), QString());
    EXPECT_EQ(starts, 0);
    clock.advance(milliseconds(1499));
    EXPECT_EQ(starts, 0);
    clock.advance(milliseconds(1));
    EXPECT_EQ(starts, 1);
    EXPECT_TRUE(overlayUp);

    // Without a delay it still waits for the next turn of the event loop,
    // so the caller has the id before any end can be told.
    userCancels();
    previousArea = picture();
    CaptureRequest last;
    last.lastRegion = true;
    last.clipboard = true;
    EXPECT_EQ(requests().start(2, last), QString());
    EXPECT_TRUE(ends.size() == 1u && copied.empty());
    clock.turn();
    ASSERT_EQ(ends.size(), 2u);
    EXPECT_EQ(ends[1], (End{End::Kind::Done, 2, QString()}));
}

TEST_F(Requests, AFinishedCaptureGoesWhereTheRequestSaysAndIsAnsweredDone)
{
    ASSERT_EQ(requests().start(7, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    ASSERT_TRUE(overlayUp);
    EXPECT_TRUE(userFinishes(picture(30, 20), notCalled));
    EXPECT_EQ(savedTo, QStringList{QStringLiteral("/shots")});
    EXPECT_TRUE(copied.empty());
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(ends[0], (End{End::Kind::Done, 7, QStringLiteral("/shots/shot-30x20.png")}));
    // The check for a missing picture finds the request answered.
    clock.turn();
    EXPECT_EQ(ends.size(), 1u);
    EXPECT_TRUE(reported.isEmpty());
}

TEST_F(Requests, TheClipboardAndAPathTogetherGetBothAndOnlyTheFileIsAnswered)
{
    CaptureRequest both = toPath(QStringLiteral("/shots"));
    both.clipboard = true;
    ASSERT_EQ(requests().start(3, both), QString());
    clock.turn();
    EXPECT_TRUE(userFinishes(picture(5, 4), notCalled));
    EXPECT_EQ(copied, std::vector<QSize>{QSize(5, 4)});
    EXPECT_EQ(ends,
              std::vector<End>({{End::Kind::Done, 3, QStringLiteral("/shots/shot-5x4.png")}}));

    // The clipboard alone: done, with no path.
    CaptureRequest copy;
    copy.clipboard = true;
    ASSERT_EQ(requests().start(4, copy), QString());
    clock.turn();
    EXPECT_TRUE(userFinishes(picture(), notCalled));
    EXPECT_EQ(copied.size(), 2u);
    EXPECT_EQ(ends.back(), (End{End::Kind::Done, 4, QString()}));
    EXPECT_EQ(savedTo.size(), 1);
}

TEST_F(Requests, WithoutPathOrClipboardTheFinishDecidesWhereThePictureGoes)
{
    ASSERT_EQ(requests().start(5, CaptureRequest{}), QString());
    clock.turn();
    int finishes = 0;
    EXPECT_TRUE(userFinishes(picture(), [&] {
        ++finishes;
        return SaveResult{QStringLiteral("/saves/a.png"), {}, {}};
    }));
    EXPECT_EQ(finishes, 1);
    EXPECT_EQ(ends.back(), (End{End::Kind::Done, 5, QStringLiteral("/saves/a.png")}));

    // A copy or a pin from the finish writes nothing: done, no path.
    ASSERT_EQ(requests().start(6, CaptureRequest{}), QString());
    clock.turn();
    EXPECT_TRUE(userFinishes(picture(), [] { return SaveResult{}; }));
    EXPECT_EQ(ends.back(), (End{End::Kind::Done, 6, QString()}));
}

TEST_F(Requests, ASaveThatFailsIsAnsweredWithWhyAndWhereThePictureWasKept)
{
    saveFails = QStringLiteral("/shots does not exist.");
    keptAt = QStringLiteral("/home/u/Pictures/k.png");
    ASSERT_EQ(requests().start(8, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    EXPECT_TRUE(userFinishes(picture(), notCalled));
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(ends[0].kind, End::Kind::Failed);
    EXPECT_EQ(ends[0].text, QStringLiteral("/shots does not exist. The picture was saved to "
                                           "/home/u/Pictures/k.png instead."));

    // Kept nowhere: the reason alone.
    keptAt.clear();
    ASSERT_EQ(requests().start(9, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    EXPECT_TRUE(userFinishes(picture(), notCalled));
    EXPECT_EQ(ends.back(), (End{End::Kind::Failed, 9, QStringLiteral("/shots does not exist.")}));
}

TEST_F(Requests, ACancelledCaptureIsAnsweredCancelledOnceAndFreesTheNextRequest)
{
    ASSERT_EQ(requests().start(10, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    userCancels();
    EXPECT_EQ(ends, std::vector<End>({{End::Kind::Cancelled, 10, {}}}));
    clock.advance(milliseconds(1000));
    EXPECT_EQ(ends.size(), 1u);
    EXPECT_TRUE(savedTo.isEmpty());
    // The request is over: a picture now is no longer its.
    EXPECT_FALSE(requests().takeFinishedCapture(picture(), notCalled));
    EXPECT_EQ(requests().start(11, toPath(QStringLiteral("/shots"))), QString());
}

TEST_F(Requests, ACaptureThatEndsFinishedWithoutAPictureFailsOnTheNextTurn)
{
    ASSERT_EQ(requests().start(12, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    overlayUp = false;
    requests().captureEnded(true);
    EXPECT_TRUE(ends.empty()); // the picture may still follow
    clock.turn();
    EXPECT_EQ(ends, std::vector<End>({{End::Kind::Failed, 12,
                                       QStringLiteral("the capture ended without a picture")}}));
    // A picture that comes too late belongs to no request.
    EXPECT_FALSE(requests().takeFinishedCapture(picture(), notCalled));
    EXPECT_TRUE(savedTo.isEmpty());

    // The late check of one request never ends the next.
    ASSERT_EQ(requests().start(13, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    overlayUp = false;
    requests().captureEnded(true);
    EXPECT_TRUE(requests().takeFinishedCapture(picture(), notCalled));
    ASSERT_EQ(requests().start(14, toPath(QStringLiteral("/shots"), 50)), QString());
    clock.turn();
    EXPECT_EQ(ends.size(), 2u);
    EXPECT_EQ(ends.back().id, 13u);
}

TEST_F(Requests, OneRequestAtATime)
{
    ASSERT_EQ(requests().start(20, toPath(QStringLiteral("/shots"), 500)), QString());
    // Refused while the first waits for its delay ...
    EXPECT_EQ(requests().start(21, toPath(QStringLiteral("/shots"))),
              QStringLiteral("another requested capture is under way"));
    clock.advance(milliseconds(500));
    ASSERT_TRUE(overlayUp);
    // ... and while its overlay is up, the previous area included.
    CaptureRequest last;
    last.lastRegion = true;
    last.clipboard = true;
    EXPECT_EQ(requests().start(22, last), QStringLiteral("another requested capture is under way"));
    userCancels();
    clock.advance(milliseconds(1000));
    // The refused ones never get an end of their own.
    EXPECT_EQ(ends, std::vector<End>({{End::Kind::Cancelled, 20, {}}}));
    EXPECT_EQ(starts, 1);
}

TEST_F(Requests, ACaptureTheUserRunsRefusesAnInteractiveRequestButNotThePreviousArea)
{
    overlayUp = true; // started with the hot key
    EXPECT_EQ(requests().start(30, toPath(QStringLiteral("/shots"))),
              QStringLiteral("a capture is already running"));
    // Its picture is not the request's.
    EXPECT_FALSE(requests().takeFinishedCapture(picture(), notCalled));

    previousArea = picture(12, 9);
    CaptureRequest last = toPath(QStringLiteral("/shots"));
    last.lastRegion = true;
    ASSERT_EQ(requests().start(31, last), QString());
    clock.turn();
    EXPECT_EQ(ends.back(), (End{End::Kind::Done, 31, QStringLiteral("/shots/shot-12x9.png")}));
    EXPECT_EQ(starts, 0);
    // The user's capture ending is none of the requests' business.
    userCancels();
    EXPECT_EQ(ends.size(), 1u);
}

TEST_F(Requests, ACaptureTheUserStartsDuringTheDelayFailsTheRequest)
{
    ASSERT_EQ(requests().start(32, toPath(QStringLiteral("/shots"), 800)), QString());
    clock.advance(milliseconds(400));
    overlayUp = true; // the hot key, meanwhile
    clock.advance(milliseconds(400));
    EXPECT_EQ(starts, 0);
    EXPECT_EQ(ends, std::vector<End>(
                        {{End::Kind::Failed, 32, QStringLiteral("a capture is already running")}}));
    EXPECT_EQ(reported, QStringList{QStringLiteral("a capture is already running")});
    // Its finish is still the user's.
    EXPECT_FALSE(userFinishes(picture(), notCalled));
}

TEST_F(Requests, ACaptureAModalDialogKeepsFromStartingFailsAtOnce)
{
    modalDialogOpen = true;
    ASSERT_EQ(requests().start(40, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(ends, std::vector<End>(
                        {{End::Kind::Failed, 40, QStringLiteral("the capture could not start")}}));
    // Once the dialog is answered a request goes through again.
    modalDialogOpen = false;
    ASSERT_EQ(requests().start(41, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    EXPECT_TRUE(overlayUp);
}

TEST_F(Requests, ADesktopThatCannotBeSeenFailsTheRequestWithoutAnOverlay)
{
    canSeeDesktop = false;
    ASSERT_EQ(requests().start(42, toPath(QStringLiteral("/shots"))), QString());
    clock.turn();
    EXPECT_EQ(starts, 0);
    EXPECT_EQ(ends, std::vector<End>({{End::Kind::Failed, 42,
                                       QStringLiteral("cannot take pictures of this desktop")}}));
}

TEST_F(Requests, AskingForASavePathNeedsAPathOrTheClipboard)
{
    asksForSavePath = true;
    EXPECT_TRUE(requests().start(50, CaptureRequest{}).contains(QStringLiteral("-p PATH")));
    CaptureRequest copy;
    copy.clipboard = true;
    EXPECT_EQ(requests().start(51, copy), QString());
    clock.turn();
    EXPECT_TRUE(userFinishes(picture(), notCalled));
    EXPECT_EQ(requests().start(52, toPath(QStringLiteral("/shots"))), QString());
}

TEST_F(Requests, ThePreviousAreaIsTakenAtOnceWithoutAnOverlay)
{
    CaptureRequest last;
    last.lastRegion = true;
    // None stored: the reason is the answer.
    ASSERT_EQ(requests().start(60, last), QString());
    clock.turn();
    EXPECT_EQ(ends.back(),
              (End{End::Kind::Failed, 60, QStringLiteral("there is no previous area")}));

    // Stored, with neither a path nor the clipboard: the save folder.
    previousArea = picture(40, 30);
    ASSERT_EQ(requests().start(61, last), QString());
    clock.turn();
    EXPECT_EQ(savedToFile, 1);
    EXPECT_EQ(ends.back(), (End{End::Kind::Done, 61, QStringLiteral("/saves/shot-40x30.png")}));
    EXPECT_EQ(starts, 0);
}
