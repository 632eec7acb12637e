// The one seam through which tests and batch runs answer whatever waits for the user: message boxes, common
// dialogs, previews, dialogs and sheets. Each of them is a ModalQuestion and asks here before it is shown.
//
//   SetModalHandler([](ModalQuestion& question) -> std::optional<int> {
//       if (auto* file = dynamic_cast<CFileDialog*>(&question)) { file->SetPathNames({"a.csv"}); return IDOK;
//       } return IDCANCEL;
//   });
#pragma once

#include <functional>
#include <optional>

#include "platform/core/CString.h"
#include "platform/core/Types.h"

class ModalQuestion {
  public:
    virtual ~ModalQuestion() = default;
};

struct MessageBoxQuestion : ModalQuestion {
    MessageBoxQuestion(const char* message, UINT buttons) : text(message), type(buttons) {}

    CString text;
    UINT type;
};

// The button pressed. None: a handler for this kind of question alone answers, or the user.
using ModalHandler = std::function<std::optional<int>(ModalQuestion&)>;

// Installs `handler` (empty: none) and returns the one before it.
ModalHandler SetModalHandler(ModalHandler handler);

// What the handler answers; none without one.
std::optional<int> AnswerInsteadOfUser(ModalQuestion& question);
