// Lets this thread's allocations by operator new fail, to see what an operation does without memory.
#pragma once

class FailingMemory {
  public:
    // The first `granted` allocations succeed, all further ones of this object's life fail.
    explicit FailingMemory(long granted);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    // Whether an allocation has failed.
    bool HasFailed() const;
};

// Calls act() with 0, 1, 2 ... allocations granted, until all that it asks for are; after each call
// check(failed). prepare() comes before each call.
template <class Prepare, class Act, class Check>
void WithEveryFailure(Prepare prepare, Act act, Check check) {
    bool failed = true;
    for (long granted = 0; failed; ++granted) {
        prepare();
        {
            const FailingMemory memory(granted);
            act();
            failed = memory.HasFailed();
        }
        check(failed);
    }
}
