# For scripts of this folder: what is expected of the examples.

fail() {
    echo "$*" >&2
    exit 1
}

# expect_pixel FILE.ppm X Y "R G B"
expect_pixel() {
    local header words found
    IFS= read -r header <"$1"
    read -ra words <<<"$header"
    found=$(od -An -tu1 -v -j $((${#header} + 1 + 3 * ($3 * words[1] + $2))) -N 3 "$1" | xargs)
    [ "$found" = "$4" ] || fail "$1: pixel $2 $3 is $found, not $4"
}

# expect_line NAME LINE: an example's output has this line.
expect_line() {
    grep -qxF "$2" "$1.txt" || fail "$1 does not print: $2"
}

# Runs the six examples in the folder BINARIES and looks at what they print and draw.
check_examples() {
    local name
    for name in blend button circle clock outline sheen; do
        "$1/$name" >"$name.txt" || fail "$name fails"
    done
    # By mode m at half strength, each channel is ((m + 1) * 128 + (ground + 1) * 127) >> 8.
    expect_line blend "Multiply is mode 8"
    expect_pixel blend.ppm 5 5 "40 80 255"
    expect_pixel blend.ppm 60 60 "148 40 127"
    expect_pixel blend.ppm 160 60 "40 40 127"
    expect_pixel blend.ppm 260 60 "128 80 255"
    # Squares of 16 pixels around the button.
    expect_line button "SrcOver at 40, 40"
    expect_pixel button.ppm 0 0 "235 235 235"
    expect_pixel button.ppm 16 0 "210 210 210"
    expect_pixel button.ppm 16 16 "235 235 235"
    # Within and without 80 pixels of the middle.
    expect_pixel circle.ppm 160 100 "255 128 0"
    expect_pixel circle.ppm 160 22 "255 128 0"
    expect_pixel circle.ppm 160 17 "0 0 0"
    # The rim, the tick of twelve o'clock, no tick beside it, the pivot.
    expect_pixel clock.ppm 120 10 "60 60 70"
    expect_pixel clock.ppm 120 27 "60 60 70"
    expect_pixel clock.ppm 130 27 "255 255 255"
    expect_pixel clock.ppm 120 120 "60 60 70"
    # The mitre of a stroke of 20 around (100, 20).
    expect_line outline "line 110 10"
    expect_pixel outline.ppm 60 14 "200 220 255"
    expect_pixel outline.ppm 60 19 "0 0 128"
    expect_pixel outline.ppm 60 60 "255 255 255"
    expect_line sheen "Angular Symmetry: 5 of 0 to 64"
    expect_line sheen "height in the middle: 0.75"
    expect_pixel sheen.ppm 0 0 "0 0 0"
}
