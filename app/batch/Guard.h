// The one place that turns exceptions into failures. Nothing of ours throws, but memory may end anywhere and
// libraries have reasons of their own.
#pragma once

#include <exception>
#include <new>
#include <stdexcept>

#include "app/table/Result.h"

namespace app {

template <class Work>
auto WithoutExceptions(Work&& work) -> decltype(work()) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return Refusal("not enough memory for this file");
    } catch (const std::length_error&) {
        return Refusal("not enough memory for this file");
    } catch (const std::exception& error) {
        return Refusal(std::string("ended without a result: ") + error.what());
    }
}

}  // namespace app
