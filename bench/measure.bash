# shellcheck shell=bash
# The four conversions and how a run is measured; sourced by the scripts that measure. A conversion
# runs in the folder of a database with the folders legacy and packed.
# shellcheck disable=SC2034 # the arrays are for the scripts

conversions=(matrices_pack matrices_unpack logicalio_pack logicalio_unpack)

# set_arguments CONVERSION OUT: the array `arguments` for the program, which writes into OUT.
set_arguments() {
  local all=matrices.json,availableInputs.json,availableOutputs.json,portLabels.json
  case $1 in
    matrices_pack) arguments=(-f matrices -p -s legacy -i matrices.json -d "$2") ;;
    matrices_unpack) arguments=(-f matrices -u -s packed -d "$2" -o "$all,userPortLabels.json") ;;
    logicalio_pack) arguments=(-f logicalio -p -s packed -i legacy/sources.json -d "$2") ;;
    logicalio_unpack)
      arguments=(-f logicalio -u -s packed -i logicalSources -d "$2" -o sources.json)
      ;;
    *) echo "no such conversion: $1" >&2 && return 1 ;;
  esac
}

# bytes_of CONVERSION OUT: of the input for a pack, written for an unpack.
bytes_of() {
  case $1 in
    matrices_pack) stat -c %s legacy/matrices.json ;;
    logicalio_pack) stat -c %s legacy/sources.json ;;
    matrices_unpack) cat "$2"/*.json | wc -c ;;
    logicalio_unpack) stat -c %s "$2/sources.json" ;;
  esac
}

# set_floor FLOOR: the array `arguments` for what a library alone does with the database, its
# program first, and `title`.
set_floor() {
  local matrices=legacy/matrices.json sources=legacy/sources.json
  case $1 in
    rapidjson-copying)
      title="RapidJSON parses \`matrices.json\`, copying"
      arguments=(rapidjson_floor copying "$matrices")
      ;;
    rapidjson-in-situ)
      title="RapidJSON parses \`matrices.json\` in place"
      arguments=(rapidjson_floor in-situ "$matrices")
      ;;
    rapidjson-sse42)
      title="RapidJSON parses \`matrices.json\` in place, SSE4.2"
      arguments=(rapidjson_floor_sse42 in-situ "$matrices")
      ;;
    rapidjson-write)
      title="RapidJSON writes \`matrices.json\`"
      arguments=(rapidjson_floor write "$(stat -c %s "$matrices")" floor.out)
      ;;
    cjson-parse)
      title="cJSON parses \`sources.json\`"
      arguments=(cjson_floor parse "$sources")
      ;;
    cjson-parse-print)
      title="cJSON parses and prints \`sources.json\`"
      arguments=(cjson_floor parse-print "$sources")
      ;;
    cjson-build)
      title="cJSON builds and prints \`sources.json\`"
      arguments=(cjson_floor build "$(stat -c %s "$sources")" floor.out)
      ;;
  esac
}

# floor_of CONVERSION: what it cannot do without.
floor_of() {
  case $1 in
    matrices_pack) echo rapidjson-in-situ ;;
    matrices_unpack) echo rapidjson-write ;;
    logicalio_pack) echo cjson-parse-print ;;
    logicalio_unpack) echo cjson-build ;;
  esac
}

# instructions COMMAND...: that a run takes, the loader's included. The environment is emptied and
# the addresses are fixed, so that the count repeats but for the hashes.
instructions() {
  env -i setarch -R valgrind --tool=callgrind --callgrind-out-file=/dev/null "$@" 2>&1 >/dev/null |
    sed -n 's/.*Collected : //p'
}

# emulated_instructions COUNTER EMULATOR COMMAND...: that a run takes on another processor, the
# loader's included. The hashes' secret is the same in each run: by chance alone, a count can be 2 %
# above the usual one. COUNTER is the emulator's plugin of bench/instruction_counter.cpp, EMULATOR a
# command in one word, as a build leaves it in its file `emulator`.
emulated_instructions() {
  local emulator
  read -r -a emulator <<<"$2"
  env -i QEMU_RAND_SEED=1 setarch -R "${emulator[@]}" -plugin "file=$1" -d plugin -D /dev/fd/3 "${@:3}" \
    3>&1 >/dev/null | tail -n 1
}

# program_instructions BUILD CONTROLLER ARGUMENT...: that a run of the program takes. BUILD is the
# build for the PC, CONTROLLER one for another processor, or empty for the PC's own.
program_instructions() {
  if [ -z "$2" ]; then
    instructions "$1/src/quenfold" "${@:3}"
  else
    emulated_instructions "$1/bench/libinstruction_counter.so" "$(cat "$2/emulator")" \
      "$2/src/quenfold" "${@:3}"
  fi
}

# What a program that failed took is no measurement: each of these then fails, and shows what the
# program said.

# peak_bytes COMMAND...: of resident memory.
peak_bytes() {
  local said
  said=$(/usr/bin/time -f %M "$@" 2>&1 >/dev/null) || {
    echo "${said%$'\n'*}" >&2
    return 1
  }
  echo "$((${said##*$'\n'} * 1024))"
}

# cpu_milliseconds COMMAND...: of the processor, for the program and for the system on its behalf.
cpu_milliseconds() {
  local TIMEFORMAT='%3U %3S' said
  said=$({ time "$@" >/dev/null 2>&1; } 2>&1) || return
  awk '{ print 1000 * ($1 + $2) }' <<<"$said"
}

# median: of the numbers on standard input, a line each; of two in the middle the lower.
median() { sort -g | awk '{ line[NR] = $1 } END { print line[int((NR + 1) / 2)] }'; }

# paired_runs: runs the commands of the arrays `ours` and `theirs` in turn; a line a pair: the cpu
# milliseconds of each and their ratio.
# shellcheck disable=SC2154 # the caller sets them
paired_runs() {
  local pair mine other
  for ((pair = 0; pair < 11; ++pair)); do
    mine=$(cpu_milliseconds "${ours[@]}") || return
    other=$(cpu_milliseconds "${theirs[@]}") || return
    awk '{ print $1, $2, $1 / $2 }' <<<"$mine $other" || return
  done
}
