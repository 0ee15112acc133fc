#!/usr/bin/env bash
# Measures the companion command as a whole process, beside vipsthumbnail and djpeg: memory high-water and time of a
# rendering of 100 megapixels with five script items, how many files `hv info` reads a second, and a hundred reductions to an
# eighth by each program, two processes at a time. The programs take turns in every round; a figure is the median.
#
#   bench/hv_bench.sh HV BKIMGUTL_BENCH [FOLDER]
#
# HV and BKIMGUTL_BENCH are the two programs; the pictures are made in FOLDER, best one in memory, and removed.
set -euo pipefail
hv=$(realpath "$1")
bench=$(realpath "$2")
folder=$(mktemp -d -p "${3:-/dev/shm}" halvine-hv-bench.XXXXXX)
trap 'rm -rf "$folder"' EXIT
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
rounds=${ROUNDS:-5}
script='ConOpt(0.005,0.005,LUM);ColBal(1,1.05,0.95);Blur(2,50,RGB);Unsharp(0.25,0.75,1.5,5,2,K);Crop(100,100,100,100)'

# Two processes with fifty files each; djpeg takes one file a process.
many() { printf '%s\0' "$folder"/many/*.jpg; }
thumbnails_hv() { many | xargs -0 -n 50 -P 2 "$hv" render --no-script --divisor 8 --overwrite -o "$folder/ours"; }
thumbnails_vips() { many | xargs -0 -n 50 -P 2 vipsthumbnail --size 750 -o "$folder/theirs/%s.jpg"; }
thumbnails_djpeg() { many | xargs -0 -n 1 -P 2 djpeg -scale 1/8 -outfile /dev/null; }
info() { "$hv" info "$folder"/many/*.jpg; }
render() { "$hv" render --script "$script" --overwrite -o "$folder/out.jpg" "$folder/100.jpg"; }

# Seconds of every round of every command, one file a command.
measure() {
    local begin end
    for _ in $(seq "$rounds"); do
        for one in "$@"; do
            begin=$(date +%s%N)
            "$one" >/dev/null
            end=$(date +%s%N)
            awk "BEGIN { printf \"%.3f\\n\", ($end - $begin) / 1e9 }" >>"$folder/times.$one"
        done
    done
}

median() { sort -n "$folder/times.$1" | awk '{ t[NR] = $1 } END { printf "%.3f", t[int((NR + 1) / 2)] }'; }

"$bench" --pictures "$folder"
mkdir "$folder/many" "$folder/ours" "$folder/theirs"
for i in $(seq -w 100); do cp "$folder/24.jpg" "$folder/many/$i.jpg"; done

measure thumbnails_hv thumbnails_vips thumbnails_djpeg info
measure render
peak=$(/usr/bin/time -f '%M' "$hv" render --script "$script" --overwrite -o "$folder/out.jpg" "$folder/100.jpg" 2>&1 | tail -n 1)

echo "| what | figure |"
echo "|---|---|"
echo "| hv render, 100 megapixels, five items: most memory | $((peak / 1024)) MiB |"
echo "| hv render, 100 megapixels, five items: time | $(median render) s |"
echo "| hv info, 100 files of 24 megapixels | $(median info) s, $(awk "BEGIN { printf \"%.0f\", 100 / $(median info) }") files a second |"
echo "| 100 files at 1/8, hv render, two processes | $(median thumbnails_hv) s |"
echo "| 100 files at 1/8, vipsthumbnail, two processes | $(median thumbnails_vips) s |"
echo "| 100 files at 1/8, djpeg -scale 1/8, two processes, writing nothing | $(median thumbnails_djpeg) s |"
