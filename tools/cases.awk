# SPDX-License-Identifier: GPL-3.0-or-later
# Reads ctest's log of a run and tells what ctest does not know, as a program of many test
# cases is one test to it: how many cases ran, which of them were skipped and why, which
# failed, and which never came to an end, as their program crashed or was stopped.

function close_case() {
  current = ""
  reason = ""
  in_reason = 0
}

{ sub(/\r$/, "") }

/^\[ RUN      \] / {
  close_case()
  current = substr($0, 14)
  next
}

current != "" && /: Skipped$/ { in_reason = 1; next }

/\[       OK \] .* \([0-9]+ ms\)$/ { ++ran; close_case(); next }

/\[  SKIPPED \] .* \([0-9]+ ms\)$/ {
  skipped[++skips] = current (reason == "" ? "" : ": " reason)
  close_case()
  next
}

/\[  FAILED  \] .* \([0-9]+ ms\)$/ {
  ++ran
  failed[++failures] = current
  close_case()
  next
}

/^<end of output>$/ {
  if (current != "") broken[++breaks] = current
  close_case()
  next
}

in_reason && NF { reason = reason == "" ? $0 : reason " " $0 }

END {
  printf "%d test cases ran, %d failed, %d did not end, %d were skipped.\n", ran, failures, breaks, skips
  for (i = 1; i <= skips; ++i) print "  skipped: " skipped[i]
  for (i = 1; i <= failures; ++i) print "  failed:  " failed[i]
  for (i = 1; i <= breaks; ++i) print "  did not end: " broken[i]
}
