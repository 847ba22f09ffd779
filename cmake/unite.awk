# awk -v united=FILE -f unite.awk SOURCE...: makes one source of several. What they include comes first; then each stands in a namespace
# of its own, so that equal names in them do not meet. The compiler reports lines of the sources themselves. With -v entry=NAME that
# function is called PREFIX and the source's name in each (-v prefix=PREFIX), as it has no namespace.
function hoisted(line) { return line ~ /^#include / && line !~ /\.inc"/ }

BEGIN {
    print "// Made by the build." >united
    # A test's class outside of an unnamed namespace may have its fixture in it: here, as in a source, nobody else sees it.
    print "#ifndef __clang__\n#pragma GCC diagnostic ignored \"-Wsubobject-linkage\"\n#endif" >united
    for (i = 1; i < ARGC; ++i) {
        depth = 0
        while ((getline line <ARGV[i]) > 0) {
            depth += (line ~ /^ *# *if/) - (line ~ /^ *# *endif/)
            if (hoisted(line) && depth > 0) {
                print ARGV[i] ": what is included under a condition cannot be united with other sources" >"/dev/stderr"
                exit 1
            }
            if (hoisted(line) && !seen[line]++) print line >united
        }
        close(ARGV[i])
    }
    for (i = 1; i < ARGC; ++i) {
        if (entry) {
            name = ARGV[i]
            gsub(/.*\/|\.cpp$/, "", name)
            printf "#define %s %s%s\n", entry, prefix, name >united
        }
        printf "namespace united_%d {\n#line 1 \"%s\"\n", i, ARGV[i] >united
        while ((getline line <ARGV[i]) > 0) print hoisted(line) ? "" : line >united
        close(ARGV[i])
        print "}" >united
        if (entry) print "#undef " entry >united
    }
}
