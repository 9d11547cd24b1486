# The public headers as doxygen reads them. They are written for people: a comment before a
# declaration holds up to the next blank line, one behind a declaration is about that one.

# Opens a comment that doxygen heeds, before what follows it.
function opened(line) { sub(/\/\*/, "/**", line); return line }

# The first comment is about the file.
FNR == 1 { sub(/\/\*/, "/** @file\n *"); in_comment = !/\*\//; print; next }

/^[ \t]*$/ { shared = ""; print; next }

in_comment { in_comment = !/\*\//; if (shared != "") shared = shared "\n" $0; print; next }

/^[ \t]*\/\*/ {
    in_comment = !/\*\//
    $0 = opened($0)
    shared = depth == 0 ? $0 : ""
    fresh = 1
    print
    next
}

/reserved[0-9]*(\[[0-9]+\])?;$/ { print $0 " /**< The host's. */"; next }

# A comment behind a declaration. The next declaration in a paragraph has that before it, too.
/[;,{(].*\/\*.*\*\/$/ { sub(/\/\*/, "/**<") }
/^(PLATFORM_API|#define)/ && shared != "" && !fresh { print shared }
{ fresh = 0; depth += gsub(/{/, "{") - gsub(/}/, "}"); print }
