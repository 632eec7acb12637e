// Lines that are ready in any order, written to standard output in the order of their tasks.
#pragma once

#include <cstdio>
#include <map>
#include <string>

namespace app {

class InOrder {
  public:
    // False once standard output takes no more.
    bool Put(std::size_t place, std::string text) {
        waiting_[place] = std::move(text);
        while (!waiting_.empty() && waiting_.begin()->first == next_) {
            const std::string& ready = waiting_.begin()->second;
            good_ = good_ && std::fwrite(ready.data(), 1, ready.size(), stdout) == ready.size();
            waiting_.erase(waiting_.begin());
            ++next_;
        }
        good_ = good_ && std::fflush(stdout) == 0;
        return good_;
    }
    bool IsGood() const { return good_; }

  private:
    std::map<std::size_t, std::string> waiting_;
    std::size_t next_ = 0;
    bool good_ = true;
};

}  // namespace app
