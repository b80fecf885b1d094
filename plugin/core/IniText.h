// Line ends of Vorlith.ini: files from classic Mac OS end lines in CR alone, others in
// LF, CR LF or LF CR. The reader only knows LF, so every form is rewritten first.
#pragma once

#include <string>

namespace vorlith {

// text with each CR, LF, CR LF and LF CR line end turned into one LF.
std::string VL_NormaliseLineEnds(const std::string& text);

}  // namespace vorlith
