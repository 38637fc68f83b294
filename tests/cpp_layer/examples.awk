# Makes a test program's source of the examples in headers: the indented lines of a comment. A class
# stays at the scope of a namespace, anything else becomes the body of a test.
function end() {
    if (lines == 0)
        return
    if (first ~ /^(class|struct) /)
        printf "#line %d \"%s\"\n%s\n", start, file, text
    else
        printf "TEST_F(Examples, %s_%d) {\n#line %d \"%s\"\n%s}\n\n", name, start, start, file, text
    lines = 0
    text = ""
}
FNR == 1 {
    end()
    file = FILENAME
    name = FILENAME
    sub(/.*\//, "", name)
    sub(/\.hpp$/, "", name)
}
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
END { end() }
