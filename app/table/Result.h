// A value, or the reason why there is none. Failures of the program are results: each carries the exit code
// and one message that says what, where and what to do.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "app/table/SafeText.h"

namespace app {

constexpr int kDone = 0;
constexpr int kRefused = 1;     // the data or the system refused
constexpr int kWrongUsage = 2;  // the command line is wrong
constexpr int kAlarm = 3;       // done, but the result leaves the bounds that were set
constexpr int kEmpty = 4;       // the input holds no data
constexpr int kStopped = 130;   // the user ended it, as a shell says it of an interrupt

struct Failure {
    int exitCode = kRefused;
    std::string message;
    // The way out on a command line, "name the delimiter with --delimiter"; a window offers its own.
    std::string advice = {};
    std::int64_t line = 0;  // of the file that it is about; 0: of none

    // Message and advice for a command line, without anything that a terminal would obey.
    std::string Text() const { return SafeText(advice.empty() ? message : message + "; " + advice); }
    // The same failure, of the file or column `what`; where it has a line, of that.
    Failure About(const std::string& what) const {
        const std::string place = line > 0 ? what + ":" + std::to_string(line) : what;
        return {exitCode, place + ": " + message, advice};
    }
    // The same failure, in that line.
    Failure In(std::int64_t lineOfFile) const { return {exitCode, message, advice, lineOfFile}; }
};

template <class T>
class Result {
  public:
    Result(T value) : value_(std::move(value)) {}
    Result(Failure failure) : failure_(std::move(failure)) {}

    explicit operator bool() const { return value_.has_value(); }
    // The value; only where there is one.
    T& operator*() { return *value_; }
    const T& operator*() const { return *value_; }
    T* operator->() { return &*value_; }
    const T* operator->() const { return &*value_; }
    const Failure& Error() const { return failure_; }

  private:
    std::optional<T> value_;
    Failure failure_;
};

inline Failure Refusal(std::string message, std::string advice = {}) {
    return {kRefused, std::move(message), std::move(advice)};
}
inline Failure NoData(std::string message) { return {kEmpty, std::move(message), {}}; }
inline Failure UsageError(std::string message, std::string advice = {}) {
    return {kWrongUsage, std::move(message), std::move(advice)};
}

}  // namespace app
