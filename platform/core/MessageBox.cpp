#include "platform/core/MessageBox.h"

#include <cstdio>
#include <utility>

#include "platform/core/ModalSeam.h"

namespace {

MessageBoxHandler& Handler() {
    static MessageBoxHandler handler;
    return handler;
}

}  // namespace

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

int AfxMessageBox(const char* text, UINT type) {
    MessageBoxQuestion question(text ? text : "", type);
    if (const std::optional<int> answer = AnswerInsteadOfUser(question)) return *answer;
    if (Handler()) return Handler()(text ? text : "", type);
    std::fprintf(stderr, "%s\n", text ? text : "");
    return IDOK;
}
