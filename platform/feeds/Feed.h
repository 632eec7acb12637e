// Receives lines on a thread of its own and hands them to a sink. A connection that is lost, or cannot be
// made yet, is tried again with pauses that grow.
#pragma once

#include <memory>

#include "platform/feeds/FeedAddress.h"
#include "platform/feeds/FeedSink.h"

class Feed {
  public:
    // The sink must outlive the feed. Serial ports want an application object of the toolkit: see
    // EnsureFeedToolkit().
    Feed(FeedAddress address, FeedSink& sink);
    // Stops.
    ~Feed();
    Feed(const Feed&) = delete;
    Feed& operator=(const Feed&) = delete;

    const FeedAddress& Address() const;
    // Asks it to end, and returns at once.
    void AskToStop();
    // Ends it; the sink hears nothing more afterwards.
    void Stop();

  private:
    struct Running;
    std::unique_ptr<Running> running_;
};

// Makes the toolkit's application object where there is none yet. Call it on the main thread.
void EnsureFeedToolkit();
