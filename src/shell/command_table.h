#pragma once
// The three commands, the anchor point tool and the "Tarnwick Tools" toolbar
// as data: what the host shows for each (name, caption, tooltip, status-bar
// message, bitmap, category) and the toolbar's items in order.
#include <array>
#include <string>
#include <string_view>

namespace tarnwick {

class clsExtension;

// When a command's button may be pressed.
enum class EnabledRule {
  Always,
  WhileSelToolEnabled,  // the extension's SelToolEnabled; never without an extension
};

struct CommandInfo {
  std::string_view progId;  // "Tarnwick." and the class name
  std::string_view className;
  std::string_view module;  // the class's source name on the error road
  std::string_view Name;
  std::string_view Caption;
  std::string_view Tooltip;
  std::string_view Message;
  int Bitmap;  // resource number of the toolbar image
  EnabledRule enabled = EnabledRule::Always;

  static constexpr std::string_view Category = "TNWK ArcGIS Tools";
  static constexpr bool Checked = false;
  static constexpr std::string_view HelpFile = "";
  static constexpr long HelpContextID = 0;
};

inline constexpr CommandInfo kWaypointConverterCommand{
    .progId = "Tarnwick.cmdTNWKWPConverter",
    .className = "cmdTNWKWPConverter",
    .module = "..\\cmdTNWKWPConverter.cls",
    .Name = "TNWK_Waypoint_Converter",
    .Caption = "&TNWK Waypoint Converter",
    .Tooltip = "Tarnwick Waypoint Converter",
    .Message = "Converts point layers to Trimble SoloForest format...",
    .Bitmap = 101,
};

inline constexpr CommandInfo kPlotLayoutCommand{
    .progId = "Tarnwick.clsPlotLayout",
    .className = "clsPlotLayout",
    .module = "..\\clsPlotLayout.cls",
    .Name = "TNWK_Plot_Layout",
    .Caption = "TNWK &Plot Layout Tool",
    .Tooltip = "Tarnwick Plot Layout Tool",
    .Message = "Generate Plot Layout within Stand boundaries...",
    .Bitmap = 102,
};

inline constexpr CommandInfo kTransferStandIDsCommand{
    .progId = "Tarnwick.clsTransferStandIDs",
    .className = "clsTransferStandIDs",
    .module = "..\\clsTransferStandIDs.cls",
    .Name = "TNWK_Transfer_Stand_IDs",
    .Caption = "TNWK &Import Stand IDs",
    .Tooltip = "Tarnwick Import Stand IDs",
    .Message = "Generate Stand ID values to Plot feature class...",
    .Bitmap = 104,
};

inline constexpr CommandInfo kSelPointToolCommand{
    .progId = "Tarnwick.clsSelPointTool",
    .className = "clsSelPointTool",
    .module = "..\\clsSelPointTool.cls",
    .Name = "TNWK_SelPoint",
    .Caption = "Select Anchor Point",
    .Tooltip = "Specify an anchor point for plot array",
    .Message = "Click on screen to specify an anchor point. Plot array will be forced to go through this point.",
    .Bitmap = 103,
    .enabled = EnabledRule::WhileSelToolEnabled,
};

// Whether the command's button may be pressed now; extension may be null.
bool CommandEnabled(const CommandInfo& command, const clsExtension* extension);

// The row of a ProgID, or null for one that is not ours.
const CommandInfo* FindCommand(std::string_view progId);

// One item of a toolbar: the command's ProgID, and whether a separator
// stands before it.
struct ItemDef {
  std::string ID;
  bool Group = false;
};

class clsTarnwickToolbar {
 public:
  static constexpr std::string_view Name = "Tarnwick_Toolbar";
  static constexpr std::string_view Caption = "Tarnwick Tools";
  static constexpr long ItemCount = 4;
  // Fills itemDef for the item at pos (0 to 3); any other pos leaves it as
  // it is.
  static void GetItemInfo(long pos, ItemDef& itemDef);
};

// The toolbar's commands in the order of its items.
inline constexpr std::array<const CommandInfo*, 4> kToolbarCommands{
    &kWaypointConverterCommand, &kPlotLayoutCommand, &kTransferStandIDsCommand, &kSelPointToolCommand};

}  // namespace tarnwick
