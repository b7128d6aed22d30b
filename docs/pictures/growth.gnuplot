# title: Instructions a byte over size
# desc: Four charts, one a conversion, both axes logarithmic: instructions a byte on the
# desc: controller's processor over 8 kB to 540 MB, for ten shapes of database at four sizes each.
# desc: Every line is nearly level: a database of four times the size takes four times the
# desc: instructions. Packing the matrices takes 32 to 136 of them a byte, unpacking them 7 to 66,
# desc: packing the logical IO 107 to 647, unpacking it 124 to 567. The dearest in each chart has
# desc: many device labels.
set terminal svg size 540,680 font "sans-serif,14" background "#f6f8fa"
table = "../../bench/shapes"
names = system("awk '!/^#/ { print $1 }' " . table)
title_of(shape) = system("sed -n 's/^" . shape . " [0-9]* [^ ]* //p' " . table)
curve(shape, conversion) = "< awk -v shape=" . shape . " -v conversion=" . conversion . \
                           " -f growth.awk growth.data"

array colour[10] = ["#1f2328", "#0969da", "#cf222e", "#1a7f37", "#bc4c00", \
                    "#8250df", "#1b7c83", "#bf3989", "#7d4e00", "#6e7781"]
array mark[10] = [7, 5, 9, 13, 11, 4, 6, 8, 12, 10]
conversions = "matrices_pack matrices_unpack logicalio_pack logicalio_unpack"
titles = "'matrices pack' 'matrices unpack' 'logical IO pack' 'logical IO unpack'"
left(chart) = chart % 2 ? 0.095 : 0.58
top(chart) = chart < 3 ? 0.89 : 0.508
family(conversion) = conversion[1:strstrt(conversion, "_") - 1]
strains(shape, conversion) = \
  strstrt(system("grep '^" . shape . " ' " . table), family(conversion)) > 0

set multiplot
set label "instructions a byte (up), bytes of the database (right)" at screen 0.5,0.97 center \
  textcolor "#1f2328"
set logscale xy
set xrange [5e3:1e9]
set yrange [5:1000]
set xtics ("10 kB" 1e4, "1 MB" 1e6, "100 MB" 1e8) nomirror
set ytics (10, 100, 1000) nomirror
set border 3 linecolor "#57606a"
set tics textcolor "#1f2328"
set title textcolor "#1f2328" offset 0,-0.5
set grid linecolor "#d0d7de" linetype 1
unset key
do for [chart = 1:4] {
  set lmargin at screen left(chart)
  set rmargin at screen left(chart) + 0.39
  set tmargin at screen top(chart)
  set bmargin at screen top(chart) - 0.28
  set title word(titles, chart)
  conversion = word(conversions, chart)
  plot for [i = 1:words(names)] \
    strains(word(names, i), conversion) ? curve(word(names, i), conversion) : "< echo NaN NaN" \
    with linespoints linecolor rgb colour[i] pointtype mark[i] pointsize 0.6 linewidth 1.5
  unset label
}

# The names of the lines alone.
unset title
unset border
unset tics
unset grid
set lmargin at screen 0.05
set rmargin at screen 1
set tmargin at screen 0.19
set bmargin at screen 0.01
set key inside center maxrows 5 textcolor "#1f2328" samplen 1.5 width -7 Left reverse
plot for [i = 1:words(names)] NaN with linespoints linecolor rgb colour[i] pointtype mark[i] \
  pointsize 0.8 linewidth 1.5 title title_of(word(names, i))
unset multiplot
