#!/bin/sh
# instructions.sh LIBRARY: nothing beyond x87, MMX, SSE and conditional moves. Registers
# of SSE and MMX go with the instructions listed here and no other ones. In a 64-bit
# library the compiler moves and converts with SSE2 too; what rounds is not among it.
set -eu
wide=$(readelf -h "$1" | grep -c ELF64 || true)
objdump -d --no-show-raw-insn "$1" | awk -F '\t' -v wide="$wide" '
NF < 2 { next }
{
    ++count
    split($2, words, " ")
    instruction = words[1]
    allowed = 1
    if ($2 ~ /%[yz]mm/)
        allowed = 0
    else if ($2 ~ /%xmm/)
        allowed = instruction ~ /^(add|sub|mul|div|sqrt|rsqrt|rcp|min|max|cmp[a-z]*)[ps]s$/ ||
            instruction ~ /^(and|andn|or|xor|shuf|unpckh|unpckl)ps$/ ||
            instruction ~ /^mov(a|u|h|l|hl|lh|msk|nt)ps$/ ||
            instruction ~ /^(movss|comiss|ucomiss)$/ ||
            instruction ~ /^cvt(pi2ps|t?ps2pi|si2ss[lq]?|t?ss2si)$/ ||
            (wide && instruction ~ /^(mov(sd|[ahlu]pd|d|q|dq[au])|unpck[hl]pd)$/) ||
            (wide && instruction ~ /^p(add|sub|s[lr]l|unpck[hl]|shuf)(b|w|d|q|wd|dq|qdq)$/) ||
            (wide && instruction ~ /^(p(and|andn|or|xor)|cvt(dq2pd|ps2pd|tsd2si))$/)
    else if ($2 ~ /%mm/)
        allowed = instruction ~ /^p(add|sub)([bwd]|u?s[bw])$/ ||
            instruction ~ /^p(mullw|mulhu?w|maddwd|cmp(eq|gt)[bwd])$/ ||
            instruction ~ /^p(and|andn|or|xor)$/ ||
            instruction ~ /^p(s[lr]l[wdq]|sra[wd]|ack(sswb|ssdw|uswb))$/ ||
            instruction ~ /^p(unpck[hl](bw|wd|dq)|avg[bw]|(max|min)(sw|ub))$/ ||
            instruction ~ /^p(movmskb|sadbw|shufw|extrw|insrw)$/ ||
            instruction ~ /^(movd|movq|movntq|maskmovq)$/ ||
            instruction ~ /^cvt(pi2ps|t?ps2pi)$/
    else if (wide && instruction == "movnti")
        allowed = 1
    else if (instruction ~ /^([lm]fence|clflush|movntil?|fisttp.*|popcnt.*|[lt]zcnt.*)$/)
        allowed = 0
    if (!allowed) {
        print
        wrong = 1
    }
}
END {
    if (count == 0) print "nothing to look at"
    exit wrong || count == 0
}'
