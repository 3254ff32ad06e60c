# The tour, whole: real keys into the real component, and the rows they left.
"$root/tools/tour.sh" "$OUT/tour"
