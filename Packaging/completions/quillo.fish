# fish completion for quillo

function __quillo_artifacts
    quillo list 2>/dev/null | awk -F'\t' '{ print $1 "\t" $3 ": " $4 }'
end

set -l artifact_commands check copy edit paste show text trash

complete -c quillo -f
complete -c quillo -s h -l help -d 'Tell about the program or the command'
complete -c quillo -l library -x -a '(__fish_complete_directories)' -d 'The directory that holds the captures'
complete -c quillo -n __fish_use_subcommand -l version -d 'Print the version'

complete -c quillo -n __fish_use_subcommand -a app -d 'The tray application'
complete -c quillo -n __fish_use_subcommand -a capture -d 'Capture a window into the library'
complete -c quillo -n __fish_use_subcommand -a check -d 'Read every file of artifacts and tell which are damaged'
complete -c quillo -n __fish_use_subcommand -a copy -d 'Write an artifact to the clipboard'
complete -c quillo -n __fish_use_subcommand -a doctor -d 'Tell what this desktop offers and what is missing'
complete -c quillo -n __fish_use_subcommand -a edit -d 'Change the title, the note or both'
complete -c quillo -n __fish_use_subcommand -a evidence -d 'Convert between snapshots and canonical evidence'
complete -c quillo -n __fish_use_subcommand -a list -d 'List the library, newest first'
complete -c quillo -n __fish_use_subcommand -a observe -d 'Turn a snapshot into an interface observation'
complete -c quillo -n __fish_use_subcommand -a paste -d 'Paste an artifact into the focused field'
complete -c quillo -n __fish_use_subcommand -a render -d 'Turn an interface observation into text'
complete -c quillo -n __fish_use_subcommand -a show -d 'Describe one artifact'
complete -c quillo -n __fish_use_subcommand -a snapshot -d "Read a window's accessibility tree"
complete -c quillo -n __fish_use_subcommand -a text -d 'Print the text that is pasted'
complete -c quillo -n __fish_use_subcommand -a trash -d 'Move artifacts to the Trash'

complete -c quillo -n "__fish_seen_subcommand_from $artifact_commands" -a '(__quillo_artifacts)'
complete -c quillo -n '__fish_seen_subcommand_from capture snapshot' -l window -x -d 'Its number on the display'
complete -c quillo -n '__fish_seen_subcommand_from capture' -l delay -x -d 'Seconds to bring the window to the front'
complete -c quillo -n '__fish_seen_subcommand_from capture' -l print -d 'Print the paste text'
complete -c quillo -n '__fish_seen_subcommand_from list show' -l json -d 'Print JSON'
complete -c quillo -n '__fish_seen_subcommand_from edit' -l title -x -d 'The new title'
complete -c quillo -n '__fish_seen_subcommand_from edit' -l annotations -x -d 'The new note'
complete -c quillo -n '__fish_seen_subcommand_from copy' -l composition -x \
    -a 'image-then-text text-then-image single-item image-only text-only' -d 'What goes to the clipboard'
complete -c quillo -n '__fish_seen_subcommand_from copy' -l background -d 'Return at once'
complete -c quillo -n '__fish_seen_subcommand_from paste' -l delay -x -d 'Seconds to focus the field'
complete -c quillo -n '__fish_seen_subcommand_from paste' -l pid -x -a '(__fish_complete_pids)' -d 'The destination'
complete -c quillo -n '__fish_seen_subcommand_from observe' -l no-application-root -d 'Do not put the window under an application'
complete -c quillo -n '__fish_seen_subcommand_from observe' -l no-inferred-actions -d 'List only listed actions'
complete -c quillo -n '__fish_seen_subcommand_from evidence; and not __fish_seen_subcommand_from encode decode' -a 'encode decode'
complete -c quillo -n '__fish_seen_subcommand_from observe render encode decode' -F
