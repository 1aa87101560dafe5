// The marks that the statement walk writes at the front of tokens. A marked
// token matches no statement name, so the walk passes over it; conditions
// read their tokens without marks.
#pragma once

#include <string>
#include <string_view>

// The token lies in the block of a false "se".
inline constexpr std::string_view DARK_MARK = "<--d-->";
// The token lies in the body of a finished "ripeti finche".
inline constexpr std::string_view DONE_MARK = "<--w-->";
// A move of the direction game that has already given its order.
inline constexpr std::string_view DEACTIVATED_MARK = "<deactivate>";

// `token` with every DARK_MARK and DONE_MARK taken out.
std::string without_marks(std::string_view token);
// `token` with DONE_MARK taken out.
std::string without_done_mark(std::string_view token);
// `token` without the marks at its front, any number of them in any order;
// the text that a statement name is compared with before it was marked.
std::string_view unmarked(std::string_view token);
