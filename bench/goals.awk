# The goals of goals.txt, with the best and the median of all runs: awk -f goals.awk goals.txt <table>...
function trimmed(text) {
    gsub(/^ +| +$/, "", text)
    return text
}

function nanoseconds(text, parts) {
    split(trimmed(text), parts, " ")
    return parts[1] * (parts[2] == "ms" ? 1e6 : parts[2] == "us" ? 1e3 : 1)
}

FNR == 1 { ++files }
files == 1 {
    if (!/^#/ && split($0, part, "|") == 5) {
        ++goals
        for (i = 1; i <= 5; ++i) goal[goals, i] = trimmed(part[i])
    }
    next
}
{
    row = files SUBSEP trimmed(substr($0, 1, 8)) SUBSEP trimmed(substr($0, 10, 37))
    row = row SUBSEP trimmed(substr($0, 48, 39))
    median = nanoseconds(substr($0, 88, 10))
    ratio[row] = $NF
    if (median > 0) ratio[row, "99 %"] = nanoseconds(substr($0, 99, 10)) / median
}
END {
    printf "%-8s %-37s %-29s %-28s %6s %6s %7s\n", "platform", "job", "contender", "against", "goal", "best", "median"
    for (g = 1; g <= goals; ++g) {
        count = 0
        for (run = 2; run <= files; ++run) {
            job = run SUBSEP goal[g, 1] SUBSEP goal[g, 2]
            own = job SUBSEP goal[g, 3]
            other = goal[g, 4] == "99 %" ? own SUBSEP "99 %" : job SUBSEP goal[g, 4]
            if (!(own in ratio) || !(other in ratio)) continue
            value = goal[g, 4] == "99 %" ? ratio[other] : ratio[own] / ratio[other]
            for (i = count++; i > 0 && found[i] > value; --i) found[i + 1] = found[i]
            found[i + 1] = value
        }
        if (!count) continue
        middle = (found[int((count + 1) / 2)] + found[int((count + 2) / 2)]) / 2
        printf "%-8s %-37s %-29s %-28s %6.2f %6.2f %7.2f%s\n", goal[g, 1], goal[g, 2], goal[g, 3], goal[g, 4],
            goal[g, 5], found[1], middle, found[1] <= goal[g, 5] + 0 ? "" : "  not met"
    }
}
