#include "sources/RingExtremes.h"

#include <algorithm>
#include <new>

namespace {

StoredBox Scan(const SampleRing& ring, std::uint64_t begin, std::uint64_t end) {
    return FindStoredBox(ring.GetStorage() + begin, nullptr, static_cast<long>(end - begin), 0);
}

}  // namespace

bool RingExtremes::Resize(std::uint32_t size) {
    try {
        std::vector<std::vector<StoredBox>> levels;
        std::size_t boxes = (std::size_t{size} + kBlock - 1) / kBlock;
        levels.emplace_back(boxes);
        while (boxes > 1) {
            boxes = (boxes + kGroup - 1) / kGroup;
            levels.emplace_back(boxes);
        }
        levels_ = std::move(levels);
    } catch (const std::bad_alloc&) {
        return false;
    }
    size_ = size;
    closed_ = {};
    return true;
}

void RingExtremes::Rescan(const SampleRing& ring) {
    closed_ = {};
    if (levels_.empty() || ring.GetCount() == 0) return;
    // Every group is made from blocks that are: those behind the newest sample hold no sample yet.
    auto& blocks = levels_[0];
    for (std::size_t i = 0; i < blocks.size(); ++i)
        blocks[i] = Scan(ring, i * kBlock, std::min<std::uint64_t>((i + 1) * kBlock, size_));
    for (std::size_t level = 1; level < levels_.size(); ++level) {
        for (std::size_t i = 0; i < levels_[level].size(); ++i) {
            StoredBox box;
            const auto& members = levels_[level - 1];
            for (std::size_t k = i * kGroup; k < std::min(members.size(), (i + 1) * kGroup); ++k)
                box.Add(members[k]);
            levels_[level][i] = box;
        }
    }
    Restart(ring);
}

void RingExtremes::CloseBlock(const SampleRing& ring) {
    std::size_t i = ring.GetHead() / kBlock;
    StoredBox box = Scan(ring, i * kBlock, std::uint64_t{ring.GetHead()} + 1);
    levels_[0][i] = box;
    closed_.Add(box);
    for (std::size_t level = 0; level + 1 < levels_.size(); ++level) {
        const auto& members = levels_[level];
        if (i % kGroup != kGroup - 1 && i + 1 != members.size()) return;
        i /= kGroup;
        box = {};
        for (std::size_t k = i * kGroup; k < std::min(members.size(), (i + 1) * kGroup); ++k)
            box.Add(members[k]);
        levels_[level + 1][i] = box;
    }
}

void RingExtremes::Widen(StoredBox& box, const SampleRing& ring, std::uint64_t begin,
                         std::uint64_t end) const {
    while (begin < end) {
        // The coarsest group that begins here and ends in time.
        const StoredBox* best = nullptr;
        std::uint64_t next = begin;
        std::uint64_t span = kBlock;
        for (const auto& level : levels_) {
            const std::uint64_t groupEnd = std::min<std::uint64_t>(begin + span, size_);
            if (begin % span != 0 || groupEnd > end) break;
            best = &level[begin / span];
            next = groupEnd;
            span *= kGroup;
        }
        if (best) {
            box.Add(*best);
        } else {
            next = std::min(end, (begin / kBlock + 1) * kBlock);
            box.Add(Scan(ring, begin, next));
        }
        begin = next;
    }
}

StoredBox RingExtremes::OfEverything(const SampleRing& ring) const {
    StoredBox box = closed_;
    if (ring.GetCount() > 0 && !FillsBlock(ring)) {
        const std::uint64_t head = ring.GetHead();
        box.Add(Scan(ring, head / kBlock * kBlock, head + 1));
    }
    return box;
}

StoredBox RingExtremes::OfWindow(const SampleRing& ring) const {
    StoredBox box;
    if (ring.GetCount() == 0) return box;
    const std::uint64_t behind = std::uint64_t{ring.GetHead()} + 1;
    if (ring.GetCount() == ring.GetSize()) Widen(box, ring, behind, ring.GetSize());
    Widen(box, ring, 0, behind);
    return box;
}
