// Who tells observers that it changed, and who is told.
//
// Neither owns the other: an observer detaches before it ends, and Forget() lets it end even while it is
// being told. A subject may end while it tells.
#pragma once

#include <string>
#include <vector>

namespace kelvo {

class Subject;

class Observer {
  public:
    virtual ~Observer() = default;
    virtual void Update(Subject* subject) = 0;
};

class Subject {
  public:
    Subject() = default;
    virtual ~Subject();
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;

    // Once for each observer; another call for it changes nothing. Without memory it is not attached.
    virtual void Attach(Observer* observer, const char* name);
    // While observers are being told, takes effect when all were.
    virtual void Detach(Observer* observer);
    // Calls Update(this) on every observer, in the order in which they were attached.
    virtual void Notify();

    // The observer is told nothing more, not even in the present round: for observers that end.
    void Forget(Observer* observer);

  private:
    struct Entry {
        Observer* observer;  // not owned; null once forgotten
        std::string name;
    };

    void Remove(Observer* observer);

    std::vector<Entry> observers;
    std::vector<Entry> pendingDetach;
    int notifying = 0;      // rounds under way, one inside the other
    bool* ended = nullptr;  // of the round under way: set when this object ends
};

}  // namespace kelvo
