// The command line refuses a bad choice with the Plot Layout dialog's own
// head and body.
#include <gtest/gtest.h>

#include "cli/tarnwick_program.h"
#include "plot/plot_dialog_fixture.h"

namespace tarnwick {
namespace {

using namespace plotfix;

// "tarnwick: HEAD\nBODY\n..." for the box text "HEAD\n\nBODY".
std::string CommandLineText(const std::string& boxText) {
  const auto gap = boxText.find("\n\n");
  return "tarnwick: " + boxText.substr(0, gap) + "\n" + boxText.substr(gap + 2) + "\n";
}

TEST_F(PlotDialogTest, CommandLineAndDialogRefuseWithTheSameMessage) {
  map().layers = {MakeStands(dir / "stands.gpkg", utm, {{Square(500000, 4000000, 100), "A"}})};
  map().spatialReference = utm;
  MakePoints(dir / "plots.gpkg", utm, {{500050, 4000050}}, "Plots");
  const std::string existing = dir / "plots.gpkg/Plots";
  const std::string run = "plot-layout --stands stands.gpkg --stand-id StandID --units meters --plots 4 ";
  frmPlotLayout& d = Open();
  d.SetListIndex("cbxUnits", 2);
  d.SetText("txtNumPlots", "4");

  d.SetText("txtOutput", existing);  // a class of that name exists
  OK();
  d.SetText("txtOutput", dir / "plots.gpkg/New");
  d.SetListIndex("cbxSpacingRatioOptions", 3);
  d.SetText("txtXRatio", "0");
  d.SetText("txtYRatio", "2");
  OK();
  d.SetListIndex("cbxSpacingRatioOptions", 0);
  d.SetText("txtNumPlots", "four");
  OK();
  ASSERT_EQ(app.boxes.size(), 3u);
  EXPECT_EQ(app.boxes[0].text.rfind("Specified filename already exists!", 0), 0u);
  EXPECT_EQ(app.boxes[1].text.rfind("Invalid Value for X-Value of User-Defined Ratio!", 0), 0u);

  const testkit::CommandRun exists = Tarnwick(dir, run + "--out '" + existing + "'");
  EXPECT_EQ(exists.exitCode, 2);
  EXPECT_EQ(exists.err.rfind(CommandLineText(app.boxes[0].text), 0), 0u) << exists.err;
  const testkit::CommandRun ratio = Tarnwick(dir, run + "--ratio 0:2 --out plots.gpkg/New");
  EXPECT_EQ(ratio.exitCode, 2);
  EXPECT_EQ(ratio.err, CommandLineText(app.boxes[1].text) + "--ratio '0:2'\n");
  const testkit::CommandRun count = Tarnwick(
      dir, "plot-layout --stands stands.gpkg --stand-id StandID --plots four --out plots.gpkg/New");
  EXPECT_EQ(count.exitCode, 2);
  EXPECT_EQ(count.err, CommandLineText(app.boxes[2].text) + "--plots 'four'\n");
}

}  // namespace
}  // namespace tarnwick
