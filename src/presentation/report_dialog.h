#pragma once
// The two report windows as dialog models. frmReportDialog is modal and
// follows its size by anchoring; frmModelessReportDialog stays open beside
// the map in a frame of the host and follows the frame's size by its own
// margins. Both show one report, copy it to the clipboard and print it.
//
// Controls: txtReport (the report), cmdOK "&Exit", cmdPrint "&Print",
// cmdCopy "&Copy to Clipboard", txtBackground (the frame behind the
// report), imgCornerBars (the corner decoration). Window caption " Report".
#include <string>

#include "presentation/anchoring.h"
#include "presentation/dialog_model.h"
#include "presentation/report_services.h"

namespace tarnwick {

struct ReportServices {
  Clipboard& clipboard;
  ReportPrinter& printer;
  platform::host::Application* application = nullptr;  // message boxes and the error road
  const platform::host::MapDocument* document = nullptr;
};

// Sizes in twips.
struct ScreenSize {
  long width = 0;
  long height = 0;
};

inline constexpr const char* kCopyFailedTitle = "Problem:";
inline constexpr const char* kCopyFailedText =
    "Failed to copy to clipboard!\n\n"
    "This is usually just be an intermittent and temporary problem, and it might work if you click the button "
    "again.";
inline constexpr int kCopyTries = 10;

class ReportDialog : public DialogModel {
 public:
  // The report: RTF, or plain text when it does not start with "{\rtf".
  void SetReport(std::string report);
  // What was set (the rich-text control's TextRTF).
  const std::string& TextRTF() const;
  // The report's plain text (the control's Text).
  std::string Text() const;

  // One copy: the plain text, and the RTF beside it when the report is
  // RTF. False when the clipboard refused.
  bool CopyToClipboard();
  // Prints the report inside these margins (twips).
  void PrintRTF(long leftMarginWidth, long topMarginHeight, long rightMarginWidth, long bottomMarginHeight);

 protected:
  ReportDialog(std::string module, ReportServices services);

 private:
  void cmdCopy_Click();
  void cmdPrint_Click();

  std::string module_;
  ReportServices services_;
};

class frmReportDialog : public ReportDialog {
 public:
  explicit frmReportDialog(ReportServices services);

  bool topmost = false;

  // Places the form on the screen, ends it at the lower edge of cmdOK and
  // registers the controls' anchors. nonClientHeight: the form's outer
  // height minus its inner height (0 for a view whose bounds are inner).
  void Form_Load(ScreenSize screen, long nonClientHeight);
  // After the view has set formBounds to the new size.
  void Form_Resize();

 private:
  AnchorObjectList anchors_{*this};
};

// The host's frame around the modeless window, in pixels (15 twips each).
struct ReportFrame {
  std::string caption;
  bool visible = false;
  long left = 0;
  long top = 0;
  long width = 0;
  long height = 0;
};

class frmModelessReportDialog : public ReportDialog {
 public:
  explicit frmModelessReportDialog(ReportServices services);

  // The caller sets the caption ("Analysis Complete:") and makes it
  // visible; cmdOK hides it before the window unloads.
  ReportFrame Frame;

  // Takes the layout's margins, sizes the frame to the form and places it
  // on the screen.
  void Form_Load(ScreenSize screen);
  // After the view has set Frame's width and height to the new size.
  void Form_Resize();

 private:
  // Form height or width minus: txtBackground's height and width,
  // txtReport's height and width, the tops of cmdOK, cmdCopy, cmdPrint and
  // imgCornerBars, and the left of imgCornerBars.
  struct Margins {
    long backgroundHeight = 0, backgroundWidth = 0;
    long reportHeight = 0, reportWidth = 0;
    long okTop = 0, copyTop = 0, printTop = 0, cornerTop = 0;
    long cornerLeft = 0;
  } margins_;
};

}  // namespace tarnwick
