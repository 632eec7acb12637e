#include "platform/core/ModalSeam.h"

#include <utility>

namespace {

ModalHandler& Handler() {
    static ModalHandler handler;
    return handler;
}

}  // namespace

ModalHandler SetModalHandler(ModalHandler handler) { return std::exchange(Handler(), std::move(handler)); }

std::optional<int> AnswerInsteadOfUser(ModalQuestion& question) {
    return Handler() ? Handler()(question) : std::nullopt;
}
