#pragma once

namespace tessary {

/// What the items outside the trash can be narrowed to, one value a row. Both go from each value to the next
/// greater one in an index, so that what they take depends on how many values there are and not on how many
/// items have them.

/// The source applications, but for names of white space, without regard to case; those that differ in
/// nothing else in the order of their bytes.
extern const char kSourceAppNamesQuery[];
/// The lists of tags as JSON, each once.
extern const char kTagListsQuery[];

} // namespace tessary
