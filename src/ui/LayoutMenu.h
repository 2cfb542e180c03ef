#pragma once

class QMenu;
class frmMain;

// The Plate menu's layout commands: Import Layout..., the template commands and Print
// Plate Map... The window asks for files and names; the work is done in the worksheet.
namespace LayoutMenu {
void add(frmMain &window, QMenu *plateMenu);
}
