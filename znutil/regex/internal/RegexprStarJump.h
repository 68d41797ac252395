// The one-time rewrite of a loop's star_jump, done the first time a match
// reaches it.
#ifndef ZNUTIL_REGEX_INTERNAL_REGEXPRSTARJUMP_H
#define ZNUTIL_REGEX_INTERNAL_REGEXPRSTARJUMP_H

namespace znutil::detail {

/// Rewrites the star_jump at offset `at` for good: to op_branch_update, which
/// keeps one failure entry for the whole loop, when the loop's operand starts
/// with a character that nothing after the loop can start with and holds no
/// branch; otherwise to op_jump, which pushes an entry a round.
void RewriteStarJump(unsigned char *program, int used, int at, bool foldCase);

}  // namespace znutil::detail

#endif  // ZNUTIL_REGEX_INTERNAL_REGEXPRSTARJUMP_H
