#include "output_option_dialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <QValidator>

#include "batch_texts.h"
#include "host/host_api.h"
#include "host/message_box_style.h"

namespace {

// Refuses any text holding a character a file name can't hold, so typed ones are dropped.
class FileNameValidator final : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& input, int&) const override {
        for (const QChar c : input) {
            if (!IsFileNameCharacter(static_cast<wchar_t>(c.unicode())))
                return Invalid;
        }
        return Acceptable;
    }
};

template <typename Widget>
Widget* Named(Widget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

}  // namespace

CRG_OutputOptionDlg::CRG_OutputOptionDlg(HostApi& host, const OutputOptions& options,
                                         QWidget* parent)
    : QDialog(parent), host_(host), record_(options) {
    setObjectName(QStringLiteral("CRG_OutputOptionDlg"));
    setWindowTitle(BatchText("IDS_OUTPUTOPTIONS_TITLE"));
    setMinimumWidth(460);

    sameFolder_ =
        Named(new QRadioButton(BatchText("IDS_RADIO_SAMEFOLDER")), "IDC_RADIO_SAMEFOLDER");
    specific_ = Named(new QRadioButton(BatchText("IDS_RADIO_SPECIFIC")), "IDC_RADIO_SPECIFIC");
    folder_ = Named(new QLineEdit, "IDC_EDIT_FOLDER");
    browse_ = Named(new QPushButton(BatchText("IDS_BUTTON_BROWSER")), "IDC_BUTTON_BROWSER");
    keep_ = Named(new QRadioButton(BatchText("IDS_RADIO_KEEP")), "IDC_RADIO_KEEP");
    addToName_ =
        Named(new QRadioButton(BatchText("IDS_RADIO_ADDFILENAME")), "IDC_RADIO_ADDFILENAME");
    before_ = Named(new QLineEdit, "IDC_EDIT_BEFORE");
    after_ = Named(new QLineEdit, "IDC_EDIT_AFTER");
    overwrite_ = Named(new QCheckBox(BatchText("IDS_CHECK_OVERWRITE")), "IDC_CHECK_OVERWRITE");
    buttons_ =
        Named(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel), "buttonBox");
    before_->setValidator(new FileNameValidator(before_));
    after_->setValidator(new FileNameValidator(after_));

    auto* place = new QButtonGroup(this);
    place->addButton(sameFolder_);
    place->addButton(specific_);
    auto* naming = new QButtonGroup(this);
    naming->addButton(keep_);
    naming->addButton(addToName_);

    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(specific_);
    folderRow->addWidget(folder_, 1);
    folderRow->addWidget(browse_);
    auto* placeBox = new QGroupBox(BatchText("IDS_STR_LOCATION"));
    auto* placeLayout = new QVBoxLayout(placeBox);
    placeLayout->addWidget(sameFolder_);
    placeLayout->addLayout(folderRow);

    auto* affixes = new QFormLayout;
    affixes->addRow(BatchText("IDS_STR_BEFORE"), before_);
    affixes->addRow(BatchText("IDS_STR_AFTER"), after_);
    affixes->setContentsMargins(24, 0, 0, 0);
    auto* namingBox = new QGroupBox(BatchText("IDS_STR_NAMING"));
    auto* namingLayout = new QVBoxLayout(namingBox);
    namingLayout->addWidget(keep_);
    namingLayout->addWidget(addToName_);
    namingLayout->addLayout(affixes);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(placeBox);
    layout->addWidget(namingBox);
    layout->addWidget(overwrite_);
    layout->addStretch(1);
    layout->addWidget(buttons_);

    // The controls show the record before any rule is connected.
    const OutputOptionControls start = ControlsOf(options);
    (start.specific ? specific_ : sameFolder_)->setChecked(true);
    folder_->setText(QString::fromStdWString(start.folder));
    (start.keep ? keep_ : addToName_)->setChecked(true);
    before_->setText(QString::fromStdWString(FileNameCharactersOf(start.before)));
    after_->setText(QString::fromStdWString(FileNameCharactersOf(start.after)));
    overwrite_->setChecked(start.overwrite);

    connect(specific_, &QRadioButton::toggled, this, &CRG_OutputOptionDlg::UpdateStates);
    connect(keep_, &QRadioButton::toggled, this, &CRG_OutputOptionDlg::UpdateStates);
    connect(folder_, &QLineEdit::textChanged, this, &CRG_OutputOptionDlg::UpdateStates);
    connect(browse_, &QPushButton::clicked, this, &CRG_OutputOptionDlg::ChooseFolder);
    connect(overwrite_, &QCheckBox::toggled, this, &CRG_OutputOptionDlg::OnOverwriteToggled);
    connect(buttons_, &QDialogButtonBox::accepted, this, &CRG_OutputOptionDlg::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &CRG_OutputOptionDlg::reject);
    UpdateStates();
}

OutputOptionControls CRG_OutputOptionDlg::controls() const {
    OutputOptionControls state;
    state.specific = specific_->isChecked();
    state.folder = folder_->text().toStdWString();
    state.keep = keep_->isChecked();
    state.before = before_->text().toStdWString();
    state.after = after_->text().toStdWString();
    state.overwrite = overwrite_->isChecked();
    return state;
}

void CRG_OutputOptionDlg::UpdateStates() {
    const OutputOptionControls state = controls();
    folder_->setEnabled(state.specific);
    browse_->setEnabled(state.specific);
    before_->setEnabled(!state.keep);
    after_->setEnabled(!state.keep);
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(OkEnabled(state));
}

void CRG_OutputOptionDlg::ChooseFolder() {
    QFileDialog dialog(this, BatchText("IDS_HELPER_TITLE"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    folder_->setText(dialog.selectedFiles().constFirst() + QLatin1Char('/'));
}

// Results that could only fall on their sources keep the overwrite box checked.
void CRG_OutputOptionDlg::OnOverwriteToggled(bool checked) {
    if (checked || WouldDiffer(controls()))
        return;
    const std::wstring text = BatchText("IDS_GW_MUSTOVERWRITING").toStdWString();
    const std::wstring title = windowTitle().toStdWString();
    host_.HostMessageBox(text.c_str(), message_box::kWarning, title.c_str(), nullptr,
                         reinterpret_cast<HostWindow>(this));
    overwrite_->setChecked(true);
}

void CRG_OutputOptionDlg::accept() {
    const OutputOptionControls state = controls();
    const std::string_view failed = FailedOkCheck(state);
    if (!failed.empty()) {
        const std::wstring text = BatchText(failed).toStdWString();
        host_.HostMessageShow(text.c_str(), 0, 0, L"", 0, 0);
        return;
    }
    record_ = WriteBack(state, record_);
    QDialog::accept();
}
