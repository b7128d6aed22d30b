# Reads counts as bench/count-size writes them. Prints for each shape and conversion with more than
# one size: shape, conversion, bytes of the largest size, instructions a byte at the smallest and at
# the largest, and the growth exponent: the slope of log instructions over log bytes by least
# squares. From every size a start is subtracted, the bytes and the instructions of the same
# conversion of "usual 10".
$1 == "usual" && $2 == 10 { start_bytes[$3] = $4; start[$3] = $5; next }
{ shape[NR] = $1; conversion[NR] = $3; bytes[NR] = $4; counted[NR] = $5 }
END {
  for (line in shape) {
    row = shape[line] " " conversion[line]
    instructions = counted[line] - start[conversion[line]]
    further = bytes[line] - start_bytes[conversion[line]]
    add(row, log(further), log(instructions))
    keep_ends(row, bytes[line], instructions / further)
  }
  for (row in sizes) {
    if (sizes[row] > 1) {
      print row, most[row], at_least[row], at_most[row], slope(row)
    }
  }
}
function add(row, x, y) {
  ++sizes[row]
  sum_x[row] += x
  sum_y[row] += y
  sum_xx[row] += x * x
  sum_xy[row] += x * y
}
function keep_ends(row, size, each) {
  if (!(row in most) || size > most[row]) {
    most[row] = size
    at_most[row] = each
  }
  if (!(row in least) || size < least[row]) {
    least[row] = size
    at_least[row] = each
  }
}
function slope(row,    across) {
  across = sizes[row] * sum_xx[row] - sum_x[row] ^ 2
  return (sizes[row] * sum_xy[row] - sum_x[row] * sum_y[row]) / across
}
