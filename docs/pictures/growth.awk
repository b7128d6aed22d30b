# Prints one line of growth.svg: bytes and instructions a byte, a start subtracted, of the counts of
# a shape and a conversion, which are given with -v, in a file like growth.data.
$1 == "usual" && $2 == 10 && $3 == conversion { start_bytes = $4; start = $5; next }
$1 == shape && $3 == conversion { bytes[++sizes] = $4; counted[sizes] = $5 }
END {
  for (i = 1; i <= sizes; ++i) print bytes[i], (counted[i] - start) / (bytes[i] - start_bytes)
}
