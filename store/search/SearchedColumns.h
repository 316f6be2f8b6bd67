#pragma once

#include <QByteArray>

#include <array>

namespace tessary {

/// The columns of an item's row that a keyword is looked for in.
inline constexpr std::array kSearchedColumns{"source_app_name", "tags_json", "note",           "filename",
                                             "content_text",    "ocr_text",  "generated_title"};
inline constexpr size_t kSearchedApp = 0;  ///< Where `app:` looks.
inline constexpr size_t kSearchedTags = 1; ///< Where `tag:` looks.

} // namespace tessary
