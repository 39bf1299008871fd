#!/bin/bash
# Translates the files of a list as a Slurm job array. Each task translates every N-th file of the list, where N is the
# number of tasks:
#
#   find "$PWD/parts" -name '*.stp' -o -name '*.step' -o -name '*.p21' -o -name '*.stpZ' | sort >files.txt
#   sbatch --array=1-50 brivet-array.sh files.txt pages
#
# The page, the logs and the report of parts/x.stp are pages/x.stp.html, pages/x.stp.logs/ and pages/x.stp.json. The
# status of a task is the first one of brivet that is not 0: 8 is a partial result.
#SBATCH --job-name=brivet
#SBATCH --cpus-per-task=1
set -u
list=$1 folder=$2
index=${SLURM_ARRAY_TASK_ID:-1} count=${SLURM_ARRAY_TASK_COUNT:-1}
mkdir -p "$folder"
status=0
while IFS= read -r input; do
  output=$folder/${input##*/}
  brivet -quiet -logdir "$output.logs" -report "$output.json" "$input" "$output.html" </dev/null || {
    result=$?
    if [[ $status -eq 0 ]]; then status=$result; fi
  }
done < <(awk -v i="$index" -v n="$count" 'NR % n == i % n' "$list")
exit "$status"
