#!/bin/sh
# The command-line host end to end, `plumet --no-window` with the default
# text, on photographs of 3000 by 2000, 6000 by 4000 and 12000 by 9000 pixels,
# each time beside a plain copy of the same file through the same image
# library (photo_copy), in one run. Times are medians of the runs, taken in
# turn; memory is the peak resident size of each program against the bytes
# of the image itself.
#   bench/hosts/run_bench.sh [build directory, default build-bench] [runs, default 5]
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-$root/build-bench}
runs=${2:-5}
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DPLUMET_BENCH=ON >/dev/null
cmake --build "$build" --target plumet plumet_filter photo_copy -j2 >/dev/null
out=$build/test-output/end_to_end
mkdir -p "$out"
for size in 3000x2000 6000x4000 12000x9000; do
    [ -f "$out/photo$size.jpg" ] ||
        "$build/bench/hosts/photo_copy" --make "${size%x*}" "${size#*x}" "$out/photo$size.jpg"
done
python3 - "$build" "$out" "$runs" <<'PY'
import os, resource, subprocess, sys, time
build, out, runs = sys.argv[1], sys.argv[2], int(sys.argv[3])
env = dict(os.environ, XDG_STATE_HOME=out + "/state", XDG_CONFIG_HOME=out + "/config")
for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"):
    env.pop(name, None)

def run(args):
    """Wall seconds and peak resident bytes of one run of a program."""
    pid = os.fork()
    if pid == 0:
        fd = os.open(os.devnull, os.O_WRONLY)
        os.dup2(fd, 2)
        os.execve(args[0], args, env)
    start = time.monotonic()
    _, status, usage = os.wait4(pid, 0)
    seconds = time.monotonic() - start
    if status != 0:
        sys.exit("%s failed with status %d" % (" ".join(args), status))
    return seconds, usage.ru_maxrss * 1024

print("%-11s %8s %8s %9s %9s %9s %9s" %
      ("photo", "copy s", "plumet s", "filter s", "copy MB", "plumet MB", "x image"))
for size in ("3000x2000", "6000x4000", "12000x9000"):
    w, h = (int(v) for v in size.split("x"))
    photo = "%s/photo%s.jpg" % (out, size)
    copies, plumets = [], []
    n = runs if w * h <= 24000000 else max(1, runs // 2)
    for _ in range(n):
        copies.append(run([build + "/bench/hosts/photo_copy", photo, out + "/copy.jpg"]))
        plumets.append(run([build + "/hosts/plumet", "--no-window", photo, out + "/plumet.jpg"]))
    median = lambda xs: sorted(xs)[len(xs) // 2]
    c, p = median([s for s, _ in copies]), median([s for s, _ in plumets])
    cm, pm = max(m for _, m in copies), max(m for _, m in plumets)
    print("%-11s %8.2f %8.2f %9.2f %9.0f %9.0f %9.2f" %
          (size, c, p, p - c, cm / 2**20, pm / 2**20, pm / (w * h * 3)))
PY
echo "load average: $(cut -d' ' -f1-3 /proc/loadavg) on $(nproc) cores"
