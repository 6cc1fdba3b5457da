#!/usr/bin/env bash
# Installs what is missing, builds ZQCore and runs the example host program on 1 and 4 processes.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${ZQ_BUILD_DIR:-$root/build}

bash "$root/scripts/install-deps.sh"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release
cmake --build "$build" --target zq_host_example -j "$(nproc)"

# Open MPI refuses root and more ranks than cores unless told otherwise.
export OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1
export OMPI_MCA_rmaps_base_oversubscribe=1 OMPI_MCA_hwloc_base_binding_policy=none
for np in 1 4; do
  echo "=== zq_host_example on $np process(es) ==="
  mpiexec -n "$np" "$build/examples/zq_host_example"
done
