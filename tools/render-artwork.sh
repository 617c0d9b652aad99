#!/usr/bin/env bash
# Renders the icon and the pictures in res/ and packaging/ from the one drawing, res/artwork/tidemark.svg.
# The results are committed: run this after a change of the drawing, look at them, commit both.
#
# usage: tools/render-artwork.sh
. "$(dirname "$0")/common.sh"
. "$top/tools/install.sh"
set -eo pipefail
cd "$top"

install_packages "${packages_to_draw[@]}"
# Without the font the words would come out in any other one.
[ -n "$(fc-list 'URW Gothic')" ] || die "the font URW Gothic is not to be found"

drawing=res/artwork/tidemark.svg
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# page ZOOM [STYLESHEET]: the whole drawing page, so that what is cut from it keeps the pixel grid.
page() {
    rsvg-convert --zoom "$1" ${2:+--stylesheet "$2"} --output "$work/page.png" "$drawing"
}

# The mark, 256 units wide, is in the page's upper left corner.
icons=()
for size in 16 24 32 48 256; do
    style=res/artwork/icon-$size.css
    [ -f "$style" ] || style=
    page "$(awk "BEGIN { print $size / 256 }")" "$style"
    convert "$work/page.png" -crop "${size}x$size+0+0" +repage "$work/$size.png"
    icons+=("$work/$size.png")
done
convert "${icons[@]}" res/tidemark.ico

# picture NAME WIDTHxHEIGHT+X+Y: a part of the page, in 256 colours and run-length encoded.
page 1
picture() {
    convert "$work/page.png" -crop "$2" +repage -background black -alpha remove -alpha off \
        +dither -colors 256 -type Palette -compress RLE "BMP3:res/$1.bmp"
}
picture splash 440x264+20+280
picture about 380x170+480+280

# The left side of the installer's last page: the splash's clock, and its deep water down to the end.
page 1.1
convert "$work/page.png" -crop 164x290+54+308 +repage -gravity north -background '#0F4156' \
    -extent 164x314 -alpha remove -alpha off +dither -colors 256 -type Palette BMP3:packaging/side.bmp
