#include "close_prompt.h"

#include "host_app.h"
#include "message_box.h"
#include "save_command.h"

namespace pdfhost {
namespace {

constexpr int kYesNoCancelWarning = 0x33;
constexpr int kYes = 6;
constexpr int kNo = 7;

}  // namespace

bool ConfirmClose(HostApp& app, HostDocument& document, QWidget* parent) {
    if (!document.IsModified() || document.IsHidden())
        return true;
    const int number = document.Number();
    const int answer =
        ShowMessageBox(app, MessageBoxRequest{"Do you want to save the changes to " +
                                                  document.FileName() + " before closing?",
                                              "pdfhost", kYesNoCancelWarning});
    HostDocument* still = app.Documents().FindByNumber(number);
    if (still == nullptr || still->IsClosing())
        return false;
    if (answer == kNo)
        return true;
    return answer == kYes && SaveInPlaceOrAsk(app, *still, parent) != 0;
}

}  // namespace pdfhost
