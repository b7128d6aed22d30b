# Prints the bars of a family of cpu-time.data, both given with -v: place, ratio, name and the ratio
# as a text. With ours=1 those of quenfold alone.
BEGIN { FS = "\t" }
$1 == family {
  ++place
  if (place == 1) all = $3
  name = $2
  sub(/ [a-z]+\.json/, "", name)
  if ($3 > 1.1 * all) name = sprintf("%s (%.0f MB)", name, $3 / 1e6)
  if (!ours || $2 ~ /^quenfold/) printf "%d %s \"%s\" \"%.1f\"\n", place, $5, name, $5
}
