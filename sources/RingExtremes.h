// The extremes of the samples in a ring, kept as samples come and go. Blocks of places are scanned when their
// last place is written, and groups of blocks, and groups of those, are joined when their last member is: so
// an append costs next to nothing and the extremes of any window are found in less than a microsecond.
//
// All is kept by place in the ring, not by age, and stays true while the window moves. A group that the
// newest sample lies in mixes old samples and new ones; it is never used.
#pragma once

#include <cstdint>
#include <vector>

#include "sources/CCircDbBuf.h"
#include "sources/StoredBox.h"

using SampleRing = CCircDbBuf<CPoint>;

class RingExtremes {
  public:
    static constexpr std::uint32_t kBlock = 64;

    // Makes room for a ring of `size` places; false, and nothing changed, without memory.
    bool Resize(std::uint32_t size);
    // Forgets everything; what the ring holds counts when `ring` is scanned.
    void Rescan(const SampleRing& ring);

    // Call after each append that fills the block of the newest sample.
    static bool FillsBlock(const SampleRing& ring) {
        return ring.GetHead() % kBlock == kBlock - 1 || ring.GetHead() + 1 == ring.GetSize();
    }
    void CloseBlock(const SampleRing& ring);

    // Over everything appended since the last Restart() or Rescan(), overwritten samples too.
    StoredBox OfEverything(const SampleRing& ring) const;
    // Over the samples that the ring holds.
    StoredBox OfWindow(const SampleRing& ring) const;
    // OfEverything() begins anew with what the ring holds.
    void Restart(const SampleRing& ring) { closed_ = OfWindow(ring); }

  private:
    static constexpr std::uint32_t kGroup = 16;

    // Widens `box` by the samples at places begin ... end - 1, all of them older than the newest sample or
    // none.
    void Widen(StoredBox& box, const SampleRing& ring, std::uint64_t begin, std::uint64_t end) const;

    std::uint32_t size_ = 0;
    std::vector<std::vector<StoredBox>> levels_;  // of blocks, of kGroup blocks, and so on
    StoredBox closed_;                            // of everything in blocks that were filled
};
