#!/bin/sh
# Renders the button images of the bundle, at one and two pixels to the logical one.
set -eu
cd "$(dirname "$0")"
bundle=../ZOVKPopupResource.bundle
for source in *.svg; do
  name=${source%.svg}
  rsvg-convert --width 24 --height 24 --output "$bundle/$name.png" "$source"
  rsvg-convert --width 48 --height 48 --output "$bundle/$name@2x.png" "$source"
done
