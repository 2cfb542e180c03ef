#pragma once

#include <string_view>

// The theme part every workbook carries (xl/theme/theme1.xml): Office's default theme, after
// the XML declaration.
namespace ooxml {
extern const std::string_view kTheme;
}
