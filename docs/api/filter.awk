# Shows a public header to Doxygen: a section becomes a group, which holds what follows
# it, and a comment becomes the documentation of what it stands before or behind.
#
#     /* ---- Title ----------- [*/]     a section; its text may go on
FNR == 1 {
    name = FILENAME
    gsub(/.*\/|\..*/, "", name)
    sub(/^\/\* /, "/** @file\n * @brief ")
    print
    next
}
/^\/\* ---- / {
    if (sections++) print "/** @} */"
    inSection = !/\*\/$/
    gsub(/^\/\* ---- | -+( \*\/)?$/, "")
    printf "/** @defgroup %s_%d %s%s\n", name, sections, $0, inSection ? "" : "\n * @{ */"
    next
}
inSection && /\*\/$/ {
    inSection = 0
    sub(/ *\*\/$/, "\n * @{ */")
    print
    next
}
/^#endif/ && sections { print "/** @} */" }
{
    sub(/^\/\* /, "/** ")
    sub(/ \/\* /, " /**< ")
    print
}
