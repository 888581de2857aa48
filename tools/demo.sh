#!/usr/bin/env bash
# demo.sh BIN_DIR: the whole way on the demonstration network, from import to stored settings. The project 演示 in the
# user's data folder is made anew each time.
set -euo pipefail
bin="$1"
morvane="$bin/morvane"
network="$bin/../share/morvane/networks/demo"
project=演示
cases=(相间距离 接地距离 零序电流)

step() { printf '\n== %s\n' "$*"; }

step "新建工程 $project"
"$morvane" project new "$project" --replace
step "读入网络"
"$morvane" import "$project" "$network"
"$morvane" modes list "$project"
step "在全部 220 kV 和 110 kV 线路上装设相间距离、接地距离、零序电流保护"
"$morvane" relays install "$project" --type 1 2 3 --level 220 --ct 240 --pt 2200
"$morvane" relays install "$project" --type 1 2 3 --level 110 --ct 120 --pt 1100
"$morvane" relays virtual "$project"
step "定义作业"
# Without the rules that coordinate a second stage with the adjacent second stage: in a ring they lengthen its times step
# by step.
for type in 1 2 3; do
    "$morvane" case new "$project" --type "$type" --name "${cases[type - 1]}" --scheme 基础方案 \
        --without-rule "${type}202" --max 最大方式 --min 最小方式 --sens 最小方式
done
step "计算灵敏度参量和定值"
for name in "${cases[@]}"; do "$morvane" case run "$project" "$name" --klm; done
step "定值和灵敏度"
"$morvane" case results "$project" "${cases[@]}"
step "保存定值"
for name in "${cases[@]}"; do "$morvane" case save "$project" "$name"; done
folder="$("$morvane" project path "$project")"
printf '定值已存入保护。计算文件在 %sTemp/\n' "$folder"
