#!/usr/bin/env bash
# Installs the Debian packages that ZQCore needs to build, test and benchmark.
# Idempotent: only packages that are missing are installed, so a second run does nothing.
set -euo pipefail

packages=(
  build-essential cmake git pkg-config locales
  libopenmpi-dev openmpi-bin
  libhdf5-dev hdf5-tools
  libgtest-dev libbenchmark-dev
  liboce-modeling-dev # OpenCASCADE, for the spline benchmark only
  libspdlog-dev
  libssl-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if ((${#missing[@]} == 0)); then
  echo "install-deps: all packages present"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
