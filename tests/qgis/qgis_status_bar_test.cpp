// A run's progress on QGIS's status bar.
#include <gtest/gtest.h>

#include "desktop_fixture.h"

namespace tarnwick::desktop::testing {
namespace {

TEST(QgisStatusBar, ShowsTheRunsMessageAndCountsItsSteps) {
  MiniDesktop desktop;
  DesktopSession session(desktop.Windows());
  auto& bar = dynamic_cast<QgisStatusBar&>(session.Application().GetStatusBar());
  bar.ShowProgressBar("Generating plots...", 0, 10, 2, true);
  bar.Step();
  bar.Step();
  EXPECT_EQ(bar.ProgressBar()->value(), 4);
  EXPECT_TRUE(bar.ProgressBar()->isVisibleTo(desktop.window.get()));
  EXPECT_EQ(bar.Message(), "Generating plots...");
  bar.SetPosition(99);  // held at the end
  EXPECT_EQ(bar.ProgressBar()->value(), 10);
  bar.HideProgressBar();
  EXPECT_FALSE(bar.ProgressBar()->isVisibleTo(desktop.window.get()));
  EXPECT_EQ(bar.Message(), "");
}

}  // namespace
}  // namespace tarnwick::desktop::testing
