# Completion for brivet in fish.
function __brivet_settings
    brivet -settings 2>/dev/null | string replace -r ' .*' '' | string replace -r '.*\.' '' | string match -r '^[A-Za-z]+$' | sort -u | string replace -r '$' =
end

complete -c brivet -o write -x -a 'html text step json svg glb stl obj' -d 'format to write'
complete -c brivet -s o -r -d 'output file'
complete -c brivet -o force -d 'overwrite an output that is an existing STEP file'
complete -c brivet -o strict -d 'treat a partial result as a failure'
complete -c brivet -o summary -d 'print what is in the input'
complete -c brivet -o list -d 'print a summary, the header and counts'
complete -c brivet -o report -r -d 'write results as JSON'
complete -c brivet -o options -r -d 'read options from a file'
complete -c brivet -o set -x -a '(__brivet_settings)' -d 'set one option'
complete -c brivet -o outdir -x -a '(__fish_complete_directories)' -d 'translate all inputs to a folder'
complete -c brivet -o jobs -x -d 'number of processes'
complete -c brivet -o logdir -x -a '(__fish_complete_directories)' -d 'folder of the logs'
complete -c brivet -o nolog -d 'write no logs'
complete -c brivet -o progress -d 'show a progress bar'
complete -c brivet -o quiet -d 'print nothing'
complete -c brivet -o verbose -d 'also print notes'
complete -c brivet -o nosync -d 'do not wait until the output is on the disk'
complete -c brivet -o tempspace -x -d 'limit for a temporary copy of the input'
complete -c brivet -o formats -d 'list the formats'
complete -c brivet -o settings -d 'list the names for -set'
complete -c brivet -o help -d 'print a help text, or the options of a format'
complete -c brivet -o version -d 'print the version'
