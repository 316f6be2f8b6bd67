#pragma once

namespace tessary {

/// By how much windows still have to enlarge their text.
///
/// Some desktops tell of a person's text size twice: as a factor, and as a resolution of the screen that has
/// the factor in it, times the whole number by which windows are enlarged as such. Qt enlarges everything by
/// the resolution, so there the text is as large as it should be already. Others tell the factor only, and
/// there nobody but us follows it, since our type is measured in pixels.
/// @param wanted the factor; 1 is the usual size.
/// @param screenScale by how much Qt enlarges windows on account of the screen, 1 at 96 dots per inch.
[[nodiscard]] double remainingTextScale(double wanted, double screenScale);

} // namespace tessary
