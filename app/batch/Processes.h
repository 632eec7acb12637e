// Tasks in processes of their own, several at a time. What one task does to the state of the process, and
// even its end by a signal, touches no other.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace app {

struct TaskEnd {
    std::string answer;
    std::string fault;  // why there is no answer: the process was ended, or could not be begun
};

// As many processes as this one may use cores.
int UsableCores();

// Runs task(0) to task(count - 1), at most `most` at a time, and calls ended() in this process for each, in
// the order in which they end. The calling process must have one thread. When it is ended, so are the tasks.
void RunInProcesses(std::size_t count, int most, const std::function<std::string(std::size_t)>& task,
                    const std::function<void(std::size_t, const TaskEnd&)>& ended);

}  // namespace app
