#include "presentation/report_dialog.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "testkit/fake_application.h"

namespace tarnwick {
namespace {

// The clipboard refuses its first `failures` writes (the last of them by
// throwing); the printer dialog is answered with `choose`.
struct Services : Clipboard, ReportPrinter {
  bool SetReport(const std::string& plainText, const std::optional<std::string>& rtf) override {
    if (++tries <= failures) {
      if (tries == failures) throw std::runtime_error("clipboard busy");
      return false;
    }
    plain = plainText;
    this->rtf = rtf;
    return true;
  }
  bool ShowPrinterDialog() override { return choose; }
  void PrintReport(const std::string& report, const PageMargins& margins) override {
    printed.push_back(report);
    this->margins = margins;
  }
  ReportServices Get() { return {*this, *this, &app, nullptr}; }

  int failures = 0;
  int tries = 0;
  std::string plain;
  std::optional<std::string> rtf;
  bool choose = true;
  std::vector<std::string> printed;
  PageMargins margins{0, 0, 0, 0};
  testkit::FakeApplication app;
};

TEST(ReportDialog, CopyPutsBothFormsRetriesAndWarns) {
  Services s;
  frmReportDialog dialog(s.Get());
  EXPECT_EQ(dialog.caption, " Report");
  EXPECT_EQ(dialog["cmdCopy"].caption, "&Copy to Clipboard");
  dialog.SetReport("{\\rtf1{\\fonttbl{\\f0 Arial;}}\\b Import Complete\\b0\\par done}");
  s.failures = 3;
  dialog.Fire("cmdCopy", ControlEvent::Click);
  EXPECT_EQ(s.tries, 4);
  EXPECT_EQ(s.plain, "Import Complete\ndone");
  EXPECT_EQ(s.rtf, dialog.TextRTF());
  EXPECT_TRUE(dialog.focus == "cmdOK" && s.app.boxes.empty());

  s.tries = 0;
  s.failures = 10;
  dialog.focus = "cmdPrint";
  dialog.Fire("cmdCopy", ControlEvent::Click);
  EXPECT_EQ(s.tries, 10);
  ASSERT_EQ(s.app.boxes.size(), 1u);
  EXPECT_EQ(s.app.boxes[0].title, "Problem:");
  EXPECT_EQ(s.app.boxes[0].text,
            "Failed to copy to clipboard!\n\nThis is usually just be an intermittent and temporary problem, and it "
            "might work if you click the button again.");
  EXPECT_EQ(dialog.focus, "cmdOK");
}

TEST(ReportDialog, PrintWithOneInchMarginsOrNothingOnCancel) {
  Services s;
  frmModelessReportDialog dialog(s.Get());
  dialog.SetReport("{\\rtf1 Analysis Complete}");
  dialog.focus = "cmdCopy";
  s.choose = false;
  dialog.Fire("cmdPrint", ControlEvent::Click);
  EXPECT_TRUE(s.printed.empty() && dialog.focus == "cmdCopy");

  s.choose = true;
  dialog.Fire("cmdPrint", ControlEvent::Click);
  EXPECT_EQ(s.printed, std::vector<std::string>{"{\\rtf1 Analysis Complete}"});
  EXPECT_EQ(s.margins, (PageMargins{1440, 1440, 1440, 1440}));
  EXPECT_EQ(dialog.focus, "cmdOK");

  dialog.Frame.visible = true;
  dialog.Fire("cmdOK", ControlEvent::Click);
  EXPECT_TRUE(!dialog.Frame.visible && dialog.unloaded);
}

TEST(ReportDialog, ModalFormEndsAtItsButtonsAndFollowsItsSize) {
  Services s;
  frmReportDialog dialog(s.Get());
  const long width = dialog.formBounds.width;
  dialog.Form_Load({19200, 14400}, 300);
  EXPECT_TRUE(dialog.topmost);
  EXPECT_EQ(dialog.formBounds.left, 9600 - width / 2);
  EXPECT_EQ(dialog.formBounds.height, 6600 + 495 + 300);
  const ControlBounds report = dialog["txtReport"].bounds;
  const ControlBounds corner = dialog["imgCornerBars"].bounds;
  const ControlBounds ok = dialog["cmdOK"].bounds;

  dialog.formBounds.width *= 2;
  dialog.formBounds.height += 1000;
  dialog.Form_Resize();
  EXPECT_EQ(dialog["txtReport"].bounds.width, report.width + width);  // stretches
  EXPECT_EQ(dialog["txtReport"].bounds.height, report.height + 1000);
  EXPECT_EQ(dialog["imgCornerBars"].bounds.left, corner.left + width);  // follows the corner
  EXPECT_EQ(dialog["cmdOK"].bounds.left, ok.left * 2);                  // scales across
  EXPECT_EQ(dialog["cmdOK"].bounds.width, ok.width * 2);
  EXPECT_EQ(dialog["cmdOK"].bounds.top, ok.top + 1000);  // stays at the bottom
}

TEST(ReportDialog, ModelessFrameFollowsItsSizeAboveTheThresholds) {
  Services s;
  frmModelessReportDialog dialog(s.Get());
  const ControlBounds form = dialog.formBounds;
  dialog.Form_Load({19200, 14400});
  EXPECT_EQ(dialog.Frame.width, form.width / 15);
  EXPECT_EQ(dialog.Frame.left, 640 - dialog.Frame.width / 2);
  EXPECT_EQ(dialog.Frame.top, 320 - dialog.Frame.height / 2);
  const ControlBounds report = dialog["txtReport"].bounds;

  // 2,000 twips wide keeps the widths; the height above 2,600 is followed.
  dialog.Frame.width = 2000 / 15;
  dialog.Frame.height = 400;
  dialog.Form_Resize();
  EXPECT_EQ(dialog["txtReport"].bounds.width, report.width);
  EXPECT_EQ(dialog["txtReport"].bounds.height, 6000 - (form.height - report.height));
  EXPECT_EQ(dialog["cmdOK"].bounds.top, 6000 - (form.height - 6600));

  dialog.Frame.width = 800;
  dialog.Form_Resize();
  EXPECT_EQ(dialog["txtReport"].bounds.width, 12000 - (form.width - report.width));

  dialog.Frame.height = 2600 / 15;  // too low: the layout stays as it stood
  dialog.Form_Resize();
  EXPECT_EQ(dialog["cmdOK"].bounds.top, 6000 - (form.height - 6600));
}

}  // namespace
}  // namespace tarnwick
