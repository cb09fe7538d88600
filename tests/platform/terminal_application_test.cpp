#include "platform/host/terminal_application.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace tarnwick::platform::host {
namespace {

// A stream in memory standing in for stderr.
class Capture {
 public:
  ~Capture() { std::fclose(file_), std::free(buffer_); }
  std::FILE* get() const { return file_; }
  std::string Text() const { return std::fflush(file_), std::string(buffer_, size_); }

 private:
  char* buffer_ = nullptr;
  std::size_t size_ = 0;
  std::FILE* file_ = open_memstream(&buffer_, &size_);
};

TEST(TerminalStatusBar, WithoutTerminalLogsEveryTenPercentOnATerminalRedrawsInPlace) {
  Capture plain;
  TerminalStatusBar logged(plain.get(), false);
  logged.ShowProgressBar("Generating plots...", 0, 200, 1, true);
  for (int i = 0; i < 200; ++i) logged.Step();
  logged.SetMessage("ignored without a terminal");
  logged.HideProgressBar();
  EXPECT_EQ(plain.Text(),
            "Generating plots...\n  10%\n  20%\n  30%\n  40%\n  50%\n  60%\n  70%\n  80%\n  90%\n  100%\n");

  Capture out;
  TerminalStatusBar bar(out.get(), true);
  bar.ShowProgressBar("Stands", 0, 4, 1, true);
  bar.Step();
  bar.SetPosition(1);  // unchanged: not drawn again
  bar.SetPosition(4);
  bar.HideProgressBar();
  const std::string text = out.Text();
  EXPECT_EQ(text.find('\n'), std::string::npos);
  EXPECT_NE(text.find("\rStands [------------------------------]   0%"), std::string::npos) << text;
  EXPECT_NE(text.find("\rStands [#######-----------------------]  25%"), std::string::npos) << text;
  EXPECT_NE(text.find("\rStands [##############################] 100%"), std::string::npos) << text;
  EXPECT_EQ(text.find(" 25%"), text.rfind(" 25%"));
}

TEST(TerminalApplication, MessageBoxesAnsweredOrNot) {
  Capture out;
  std::vector<std::string> asked;
  TerminalApplication app(out.get(), [&](const std::string& text, const std::string&, MessageButtons) {
    asked.push_back(text);
    return MessageResult::Yes;
  });
  EXPECT_EQ(app.MessageBox("Done.", "Plot Layout", MessageButtons::OK, MessageIcon::Information), MessageResult::OK);
  EXPECT_EQ(app.MessageBox("Overwrite?", "Plot Layout", MessageButtons::YesNo, MessageIcon::Question),
            MessageResult::Yes);
  app.ShowMessageWindow("Report text");
  EXPECT_EQ(out.Text(), "Plot Layout: Done.\nPlot Layout: Overwrite?\nReport text\n");
  EXPECT_EQ(asked, std::vector<std::string>{"Overwrite?"});

  Capture quiet;
  TerminalApplication noAnswers(quiet.get());
  EXPECT_EQ(noAnswers.MessageBox("Overwrite?", "T", MessageButtons::YesNo, MessageIcon::None), MessageResult::No);
  EXPECT_EQ(noAnswers.MessageBox("Go on?", "T", MessageButtons::OKCancel, MessageIcon::None), MessageResult::Cancel);
}

}  // namespace
}  // namespace tarnwick::platform::host
