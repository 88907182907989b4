# Completion for fish.

complete -c ozmira -f
complete -c ozmira -s h -l help -d 'Print help'
complete -c ozmira -n __fish_use_subcommand -l version -d 'Print the version'
complete -c ozmira -n __fish_use_subcommand -a render -d 'Draw files as PNG pictures'
complete -c ozmira -n __fish_use_subcommand -a info -d 'Show what files contain'
complete -c ozmira -n __fish_use_subcommand -a dump -d 'Print the document parsed from a file'

complete -c ozmira -n '__fish_seen_subcommand_from render' -s o -l output -r -F -d 'Where pictures go: file, folder or -'
complete -c ozmira -n '__fish_seen_subcommand_from render' -l width -x -d 'Largest width in points'
complete -c ozmira -n '__fish_seen_subcommand_from render' -l height -x -d 'Largest height in points'
complete -c ozmira -n '__fish_seen_subcommand_from render' -l scale -x -a '1 2 3 1,2 1,2,3' -d 'Pixels per point'
complete -c ozmira -n '__fish_seen_subcommand_from render' -l fill -x -a 'black white gray red green blue steelblue none' -d 'Default fill'
complete -c ozmira -n '__fish_seen_subcommand_from render' -l debug-frames -d 'Draw frames around drawing and picture'
complete -c ozmira -n '__fish_seen_subcommand_from render' -l timeout -x -d 'Seconds for a picture'
complete -c ozmira -n '__fish_seen_subcommand_from render' -s j -l jobs -x -d 'Number of threads'
complete -c ozmira -n '__fish_seen_subcommand_from render' -s q -l quiet -d 'Print problems only'
complete -c ozmira -n '__fish_seen_subcommand_from info dump' -l json -d 'Print JSON'
complete -c ozmira -n '__fish_seen_subcommand_from render info dump' -a '(__fish_complete_suffix .svg)'
