#include "sources/Subject.h"

#include <algorithm>
#include <new>
#include <utility>

namespace kelvo {

Subject::~Subject() {
    if (ended) *ended = true;
}

void Subject::Attach(Observer* observer, const char* name) try {
    const auto known = std::ranges::find(observers, observer, &Entry::observer);
    if (observer && known == observers.end()) observers.push_back({observer, name ? name : ""});
} catch (const std::bad_alloc&) {
}

void Subject::Remove(Observer* observer) {
    std::erase_if(observers, [observer](const Entry& entry) { return entry.observer == observer; });
}

void Subject::Detach(Observer* observer) {
    if (notifying == 0) {
        Remove(observer);
        return;
    }
    try {
        pendingDetach.push_back({observer, {}});
    } catch (const std::bad_alloc&) {
        Forget(observer);
    }
}

void Subject::Forget(Observer* observer) {
    for (Entry& entry : observers)
        if (entry.observer == observer) entry.observer = nullptr;
    if (notifying == 0) Remove(nullptr);
}

// By index: an observer may attach another one.
void Subject::Notify() {
    bool endedHere = false;
    bool* const outer = std::exchange(ended, &endedHere);
    ++notifying;
    for (std::size_t i = 0; i < observers.size(); ++i) {
        if (Observer* const observer = observers[i].observer) observer->Update(this);
        if (!endedHere) continue;
        if (outer) *outer = true;
        return;
    }
    ended = outer;
    if (--notifying > 0 || pendingDetach.empty()) return;
    const std::vector<Entry> leaving = std::move(pendingDetach);
    pendingDetach.clear();
    for (const Entry& entry : leaving) Detach(entry.observer);
    Remove(nullptr);
}

}  // namespace kelvo
