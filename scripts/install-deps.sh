#!/usr/bin/env bash
# Installs the Debian packages the build, the app, the local backend and the tests need.
# Safe to run again: it only installs what is missing.
set -euo pipefail

packages=(
  # build
  cmake ninja-build g++ pkg-config qt6-base-dev qt6-declarative-dev qt6-tools-dev qt6-l10n-tools
  qt6-shadertools-dev qt6-qpa-plugins
  # QML runtime modules
  qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts qml6-module-qtquick-window
  qml6-module-qtquick-templates qml6-module-qtquick-dialogs qml6-module-qtqml-workerscript qml6-module-qtqml
  qml6-module-qtqml-models qml6-module-qtcore qml6-module-qt-labs-settings qml6-module-qt-labs-folderlistmodel qml6-module-qtquick-shapes
  # features
  qt6-positioning-dev qml6-module-qtpositioning qt6-websockets-dev qt6-svg-dev qtkeychain-qt6-dev libsecret-1-0
  libqt6sql6-sqlite
  # local backend
  postgresql-15 postgresql-15-postgis-3 nodejs curl ca-certificates
  # running headless and testing
  libqt6test6 libqt6quicktest6 qml6-module-qttest xvfb xauth x11-apps x11vnc imagemagick dbus dbus-x11
  gnome-keyring libsecret-tools python3-dbusmock libglib2.0-bin xdotool
  # fonts: text, and colour emoji in names and messages
  fonts-dejavu-core fonts-noto-color-emoji
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
# nodejs may come from another source than Debian's archive; accept any node >= 20.
if command -v node >/dev/null 2>&1; then
  missing=("${missing[@]/nodejs}")
fi
missing=($(printf '%s\n' "${missing[@]}" | grep -v '^$' || true))

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
