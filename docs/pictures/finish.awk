# Makes a drawing of Graphviz or gnuplot a picture of the documentation: the title and description
# of its source, given with -v, in place of the tool's own remarks; any sans-serif font that the
# reader has; sizes in pixels.
BEGIN {
  while ((getline line <source) > 0) {
    if (sub(/^(\/\/|#) title: /, "", line)) title = line
    if (sub(/^(\/\/|#) desc: /, "", line)) description = description "\n" line
  }
  if (title == "" || description == "") {
    print source ": no title or no desc" >"/dev/stderr"
    exit failed = 1
  }
}
/<!DOCTYPE/, />/ { next }
/<!--/, /-->/ { next }
/^<(title|desc)>.*<\/(title|desc)>$/ { next }
{
  gsub(/font-family="DejaVu Sans"/, "font-family=\"sans-serif\"")
  gsub(/stroke="transparent"/, "stroke=\"none\"")
}
/<svg/ {
  opening = 1
  sub(/<svg/, "<svg role=\"img\"")
}
opening { $0 = in_pixels($0) }
{ print }
opening && />/ {
  opening = 0
  print "<title>" escaped(title) "</title>"
  print "<desc>" escaped(description) "\n</desc>"
}
END { exit failed }
function in_pixels(line) {
  while (match(line, /[0-9]pt"/)) line = substr(line, 1, RSTART) substr(line, RSTART + 3)
  return line
}
function escaped(text) {
  gsub(/&/, "\\&amp;", text)
  gsub(/</, "\\&lt;", text)
  return text
}
