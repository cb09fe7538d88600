#include "presentation/report_dialog.h"

#include <cmath>

#include "errors/error_road.h"
#include "platform/host/application.h"
#include "presentation/rtf_reader.h"

namespace tarnwick {
namespace {

constexpr long kTwipsPerPixel = 15;

long Rounded(double value) { return std::lround(value); }

}  // namespace

ReportDialog::ReportDialog(std::string module, ReportServices services)
    : DialogModel(module), module_(std::move(module)), services_(services) {
  SetErrorHost(services_.application, services_.document);
  // The form as designed, in twips: the report over a frame, the buttons
  // along the bottom and the corner bars in the lower right.
  caption = " Report";
  formBounds = {0, 0, 9600, 7590};
  Add({.name = "txtReport", .kind = ControlKind::RichTextBox, .locked = true, .bounds = {240, 240, 9000, 6120}});
  Add({.name = "cmdOK", .kind = ControlKind::CommandButton, .caption = "&Exit", .bounds = {7785, 6600, 1455, 495}});
  Add({.name = "cmdPrint", .kind = ControlKind::CommandButton, .caption = "&Print",
       .bounds = {2400, 6600, 1455, 495}});
  Add({.name = "cmdCopy", .kind = ControlKind::CommandButton, .caption = "&Copy to Clipboard",
       .bounds = {240, 6600, 2055, 495}});
  Add({.name = "txtBackground", .kind = ControlKind::TextBox, .locked = true, .bounds = {120, 120, 9240, 6360}});
  Add({.name = "imgCornerBars", .kind = ControlKind::Image, .bounds = {9225, 6840, 255, 255}});
  On("cmdCopy", ControlEvent::Click, [this] { cmdCopy_Click(); });
  On("cmdPrint", ControlEvent::Click, [this] { cmdPrint_Click(); });
}

void ReportDialog::SetReport(std::string report) {
  (*this)["txtReport"].text = std::move(report);
  NotifyChanged();
}

const std::string& ReportDialog::TextRTF() const { return (*this)["txtReport"].text; }

std::string ReportDialog::Text() const { return ReadReport(TextRTF()).PlainText(); }

bool ReportDialog::CopyToClipboard() {
  try {
    const std::string& rtf = TextRTF();
    return services_.clipboard.SetReport(Text(), IsRtf(rtf) ? std::optional<std::string>(rtf) : std::nullopt);
  } catch (...) {
    return false;  // this try failed; the caller tries again
  }
}

void ReportDialog::cmdCopy_Click() {
  bool copied = false;
  for (int attempt = 0; attempt < kCopyTries && !copied; ++attempt) copied = CopyToClipboard();
  if (!copied && services_.application) {
    services_.application->MessageBox(kCopyFailedText, kCopyFailedTitle, platform::host::MessageButtons::OK,
                                      platform::host::MessageIcon::Exclamation);
  }
  focus = "cmdOK";
}

void ReportDialog::cmdPrint_Click() {
  bool chosen = false;
  try {
    chosen = services_.printer.ShowPrinterDialog();
  } catch (...) {
    // Errors while the printer dialog is open count as a cancel.
  }
  if (!chosen) return;
  PrintRTF(1440, 1440, 1440, 1440);
  focus = "cmdOK";
}

void ReportDialog::PrintRTF(long leftMarginWidth, long topMarginHeight, long rightMarginWidth,
                            long bottomMarginHeight) {
  Guarded("PrintRTF ", module_, [&] {
    services_.printer.PrintReport(TextRTF(),
                                  {leftMarginWidth, topMarginHeight, rightMarginWidth, bottomMarginHeight});
  });
}

frmReportDialog::frmReportDialog(ReportServices services)
    : ReportDialog("...FORM = frmReportDialog", services) {
  On("cmdOK", ControlEvent::Click, [this] { unloaded = true; });
}

void frmReportDialog::Form_Load(ScreenSize screen, long nonClientHeight) {
  AsEntryPoint("Form_Load ", [&] {
    topmost = true;
    formBounds.left = Rounded(screen.width / 2.0 - formBounds.width / 2.0);
    formBounds.top = Rounded(screen.height / 3.0 - formBounds.height / 3.0);
    const ControlBounds& ok = (*this)["cmdOK"].bounds;
    formBounds.height = ok.top + ok.height + nonClientHeight;

    anchors_.Item("txtBackground").SetAnchors(3, 3);
    anchors_.Item("txtReport").SetAnchors(3, 3);
    anchors_.Item("cmdOK").SetAnchors(0, 5);
    anchors_.Item("cmdCopy").SetAnchors(0, 5);
    anchors_.Item("cmdPrint").SetAnchors(0, 5);
    anchors_.Item("imgCornerBars").SetAnchors(5, 5);
  });
  NotifyChanged();
}

void frmReportDialog::Form_Resize() {
  AsEntryPoint("Form_Resize ", [this] { anchors_.DoAnchors(); });
  NotifyChanged();
}

frmModelessReportDialog::frmModelessReportDialog(ReportServices services)
    : ReportDialog("frmModelessReportDialog", services) {
  On("cmdOK", ControlEvent::Click, [this] {
    Frame.visible = false;
    unloaded = true;
  });
}

void frmModelessReportDialog::Form_Load(ScreenSize screen) {
  AsEntryPoint("Form_Load ", [&] {
    const long height = formBounds.height;
    const long width = formBounds.width;
    const auto& c = [this](const char* name) -> const ControlBounds& { return (*this)[name].bounds; };
    margins_ = {.backgroundHeight = height - c("txtBackground").height,
                .backgroundWidth = width - c("txtBackground").width,
                .reportHeight = height - c("txtReport").height,
                .reportWidth = width - c("txtReport").width,
                .okTop = height - c("cmdOK").top,
                .copyTop = height - c("cmdCopy").top,
                .printTop = height - c("cmdPrint").top,
                .cornerTop = height - c("imgCornerBars").top,
                .cornerLeft = width - c("imgCornerBars").left};

    Frame.width = Rounded(static_cast<double>(width) / kTwipsPerPixel);
    Frame.height = Rounded(static_cast<double>(height) / kTwipsPerPixel);
    // A third of the screen down, but half the frame up.
    Frame.left = Rounded(screen.width / 2.0 / kTwipsPerPixel - Frame.width / 2.0);
    Frame.top = Rounded(screen.height / 3.0 / kTwipsPerPixel - Frame.height / 2.0);
  });
  NotifyChanged();
}

void frmModelessReportDialog::Form_Resize() {
  AsEntryPoint("Form_Resize ", [this] {
    const long width = Frame.width * kTwipsPerPixel;
    const long height = Frame.height * kTwipsPerPixel;
    if (width > 2000 && height > 2600) {
      (*this)["txtBackground"].bounds.width = width - margins_.backgroundWidth;
      (*this)["txtReport"].bounds.width = width - margins_.reportWidth;
      (*this)["imgCornerBars"].bounds.left = width - margins_.cornerLeft;
    }
    if (height > 2600) {
      (*this)["txtBackground"].bounds.height = height - margins_.backgroundHeight;
      (*this)["txtReport"].bounds.height = height - margins_.reportHeight;
      (*this)["cmdOK"].bounds.top = height - margins_.okTop;
      (*this)["cmdCopy"].bounds.top = height - margins_.copyTop;
      (*this)["cmdPrint"].bounds.top = height - margins_.printTop;
      (*this)["imgCornerBars"].bounds.top = height - margins_.cornerTop;
    }
  });
  NotifyChanged();
}

}  // namespace tarnwick
