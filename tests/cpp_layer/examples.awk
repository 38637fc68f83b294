# Makes a test program's source of the examples in headers: the indented lines of a comment. A class
# stays at the scope of a namespace, anything else becomes the body of a test. Fails if a class has
# none.
function end() {
    if (lines == 0)
        return
    if (first ~ /^(class|struct) /)
        printf "#line %d \"%s\"\n%s\n", start, file, text
    else
        printf "TEST_F(Examples, %s_%d) {\n#line %d \"%s\"\n%s}\n\n", name, start, start, file, text
    lines = 0
    text = ""
    hasExample = 1
}
FNR == 1 {
    end()
    inDetail = 0
    file = FILENAME
    name = FILENAME
    sub(/.*\//, "", name)
    sub(/\.hpp$/, "", name)
}
/^namespace detail/ { inDetail = 1 }
/^} \/\/ namespace detail/ { inDetail = 0 }
/^ *$/ { hasExample = 0 }
/^ *\/\/     / {
    line = $0
    sub(/^ *\/\/     /, "", line)
    if (lines++ == 0) {
        start = FNR
        first = line
    }
    text = text line "\n"
    next
}
# An empty line of a comment may stand within an example.
/^\/\/$/ && lines > 0 {
    text = text "\n"
    next
}
{ end() }
/^(class|struct) [A-Za-z]+( final)? [:{]/ && !inDetail && !hasExample {
    print FILENAME ":" FNR ": " $2 " has no example" > "/dev/stderr"
    failed = 1
}
END {
    end()
    exit failed
}
