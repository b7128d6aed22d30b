# title: Cpu time of the conversions beside that of others
# desc: Two bar charts of cpu time, that of packing being 1. On matrices.json, 144 MB: quenfold
# desc: unpacks it and four more files, 543 MB together, in 1.5; RapidJSON alone parses it in 0.5
# desc: and writes as long a file in 0.3; parsing and printing it take jq 7.1, Python's json 4.5 and
# desc: Node's JSON 4.3. On sources.json, 19 MB: quenfold unpacks it in 1.2; cJSON alone parses and
# desc: prints it in 0.6 and builds and prints as long a one in 0.5; parsing and printing it take jq
# desc: 1.4, Python's json 1.2 and Node's JSON 1.0.
set terminal svg size 540,560 font "sans-serif,14" background "#f6f8fa"
families = "matrices logicalio"
titles(family) = family eq "matrices" ? "matrices.json" : "sources.json"
rows(family, ours) = "< awk -v family=" . family . " -v ours=" . ours . \
                     " -f cpu-time.awk cpu-time.data"
megabytes(family) = system("awk -F '\t' '$1 == \"" . family . "\" " . \
                           "{ printf \"%.0f\", $3 / 1e6; exit }' cpu-time.data")

set multiplot
set label "Grey only parses or prints the file, or does both." \
  at screen 0.5,0.025 center textcolor "#1f2328"
set border 0
unset xtics
set ytics textcolor "#1f2328" scale 0
set title textcolor "#1f2328" offset 0,-0.3
set style fill solid noborder
set lmargin at screen 0.42
set rmargin at screen 0.9
set xrange [0:*]
set yrange [7.6:0.4]
unset key
do for [chart = 1:2] {
  family = word(families, chart)
  set tmargin at screen chart == 1 ? 0.93 : 0.475
  set bmargin at screen chart == 1 ? 0.56 : 0.105
  set title sprintf("%s, %s MB: cpu time, packing = 1", titles(family), megabytes(family))
  plot rows(family, 0) using 2:1:(0):2:($1 - 0.36):($1 + 0.36):ytic(3) with boxxyerror \
      linecolor rgb "#6e7781", \
    rows(family, 1) using 2:1:(0):2:($1 - 0.36):($1 + 0.36) with boxxyerror \
      linecolor rgb "#0969da", \
    rows(family, 0) using 2:1:4 with labels left offset 0.6,0 textcolor "#1f2328"
  unset label
}
unset multiplot
