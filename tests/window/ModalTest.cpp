// The one seam for everything that waits for the user.
#include "platform/window/CChoiceDialog.h"
#include "platform/window/CommonDialogs.h"
#include "platform/window/Printing.h"
#include "tests/window/WindowTest.h"

namespace {

class Printed : public RecordingView {
  public:
    using CView::OnFilePrint;
    using CView::OnFilePrintPreview;
};

class ModalTest : public WindowTest {
  protected:
    ModalTest() {
        before = SetModalHandler([this](ModalQuestion& question) -> std::optional<int> {
            if (auto* const file = dynamic_cast<CFileDialog*>(&question)) {
                file->SetPathNames({"a.csv"});
                return IDOK;
            }
            if (auto* const color = dynamic_cast<CColorDialog*>(&question))
                color->SetCurrentColor(RGB(1, 2, 3));
            if (auto* const choice = dynamic_cast<CChoiceDialog*>(&question)) choice->choices[0].chosen = 1;
            prints += dynamic_cast<PrintRequest*>(&question) != nullptr;
            previews += dynamic_cast<PreviewQuestion*>(&question) != nullptr;
            return answer;
        });
    }
    ~ModalTest() override { SetModalHandler(before); }

    ModalHandler before;
    int answer = IDOK;
    int prints = 0;
    int previews = 0;
};

TEST_F(ModalTest, OneHandlerAnswersDialogsBoxesPrintsAndPreviews) {
    CFileDialog file(CFileDialog::Kind::Open, nullptr, nullptr, "All files|*||");
    EXPECT_EQ(file.DoModal(), IDOK);
    EXPECT_EQ(file.GetPathName(), "a.csv");
    CColorDialog color(RGB(9, 9, 9));
    EXPECT_EQ(color.DoModal(), IDOK);
    EXPECT_EQ(color.GetColor(), RGB(1, 2, 3));
    CChoiceDialog choice("How?");
    choice.choices.resize(1);
    answer = IDCANCEL;
    EXPECT_EQ(choice.DoModal(), IDCANCEL);
    EXPECT_EQ(choice.choices[0].chosen, 1);
    EXPECT_EQ(AfxMessageBox("Really?", MB_YESNO), IDCANCEL);
    Printed view;
    view.OnFilePrint();
    view.OnFilePrintPreview();
    EXPECT_EQ(prints, 1);
    EXPECT_EQ(previews, 1);
    EXPECT_EQ(view.draws, 0) << "cancelled";
}

}  // namespace
