# Makes the Graphviz source of port-key.svg of port-key.data.
BEGIN {
  title = "A port key, its bits and its number"
  split("#ffe0dc #ffe9c2 #f4f0b8 #d3f2d3 #d5e8ff #ead9fb", colours)
}
/^#/ { next }
{
  ++fields
  field[fields] = $1
  text[fields] = $2
  name[fields] = $3
  id[fields] = $4
  width[fields] = $5
}
END {
  sum = 0
  for (i = fields; i > 0; --i) {
    place[i] = sum
    sum += width[i]
    number += id[i] * 2 ^ place[i]
  }
  key = text[1] "." text[2] "." text[3] "[" text[4] "]." text[5] ".ch" text[6]

  print "// title: " title
  print "// desc: The port key " key " and its packed number " number ","
  print "// desc: from top to bottom when packing, from bottom to top when unpacking."
  for (i = 1; i <= fields; ++i) {
    print "// desc: " field[i] ": " in_words(i)
  }
  print "digraph {"
  print "  graph [bgcolor=\"#f6f8fa\" pad=0.15 ranksep=0.4 fontname=\"DejaVu Sans\"]"
  print "  node [shape=plaintext margin=0.03 fontname=\"DejaVu Sans\" fontsize=14" \
        " fontcolor=\"#1f2328\"]"
  print "  edge [color=\"#57606a\" penwidth=1.3 arrowsize=0.8 fontname=\"DejaVu Sans\"" \
        " fontsize=14 fontcolor=\"#1f2328\"]"
  print "  key [label=<" row_table(key_cells()) ">]"
  print "  fields [label=<" field_table() ">]"
  print "  bits [label=<" row_table(bit_cells()) ">]"
  print "  number [height=0.45 label=<<font point-size=\"18\"><b>" number "</b></font>>]"
  print "  key -> fields [label=\"  pack   \"]"
  print "  key -> fields [label=\" unpack\" dir=back]"
  print "  fields -> bits -> number [dir=both]"
  print "}"
}
function in_words(i,    words) {
  words = text[i]
  if (name[i] != "-" && name[i] != text[i]) words = words ", in the dictionary " name[i]
  words = words (name[i] == "-" ? ", the number " : ", id ") id[i]
  return words ", bits " binary(i) " from bit " place[i] " on, " id[i] * 2 ^ place[i] "."
}
function binary(i,    rest, bits, j) {
  rest = id[i]
  for (j = 0; j < width[i]; ++j) {
    bits = rest % 2 bits
    rest = int(rest / 2)
  }
  return bits
}
function cell(i, content, align) {
  return "<td bgcolor=\"" colours[i] "\"" (align ? " align=\"" align "\"" : "") ">" content "</td>"
}
function plain(content) { return "<td>" content "</td>" }
function row_table(cells) {
  return "<table border=\"0\" cellborder=\"0\" cellspacing=\"0\" cellpadding=\"3\"><tr>" cells \
         "</tr></table>"
}
function key_cells() {
  return cell(1, text[1]) plain(".") cell(2, text[2]) plain(".") cell(3, text[3]) plain("[") \
         cell(4, text[4]) plain("].") cell(5, text[5]) plain(".ch") cell(6, text[6])
}
function bit_cells(    i, cells) {
  for (i = 1; i <= fields; ++i) cells = cells cell(i, binary(i))
  return cells
}
function field_table(    i, rows) {
  rows = "<tr>" heading("field") heading("dictionary") heading("id or<br/>number") heading("bits") \
         heading("first<br/>bit") heading("value") "</tr>"
  for (i = 1; i <= fields; ++i) {
    rows = rows "<tr>" cell(i, field[i], "left") cell(i, name[i] == "-" ? " " : name[i], "left") \
           cell(i, id[i], "right") cell(i, binary(i), "right") cell(i, place[i], "right") \
           cell(i, id[i] * 2 ^ place[i], "right") "</tr>"
  }
  return "<table border=\"0\" cellborder=\"1\" color=\"#d0d7de\" cellspacing=\"0\"" \
         " cellpadding=\"5\">" rows "</table>"
}
function heading(content) { return "<td bgcolor=\"#eaeef2\">" content "</td>" }
