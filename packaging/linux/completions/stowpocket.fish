# SPDX-License-Identifier: MIT
set -l verbs add list remove clear undo copy paste open show toggle quick-drop
set -l first "not __fish_seen_subcommand_from $verbs"
complete -c stowpocket -n $first -a add -d 'Put files on the shelf'
complete -c stowpocket -n $first -a list -d 'Print the files on the shelf'
complete -c stowpocket -n $first -a remove -d 'Take files off the shelf'
complete -c stowpocket -n $first -a clear -d 'Take all files off the shelf'
complete -c stowpocket -n $first -a undo -d 'Bring back what was taken off the shelf last'
complete -c stowpocket -n $first -a copy -d 'Put files of the shelf on the clipboard'
complete -c stowpocket -n $first -a paste -d 'Add what is on the clipboard'
complete -c stowpocket -n $first -a open -d 'Open files of the shelf with their applications'
complete -c stowpocket -n $first -a show -d 'Open the shelf'
complete -c stowpocket -n $first -a toggle -d 'Open or close the shelf'
complete -c stowpocket -n $first -a quick-drop -d 'Add what is selected in the file manager'
complete -c stowpocket -n $first -s h -l help -d 'Print help and end'
complete -c stowpocket -n $first -l version -d 'Print the version and end'
complete -c stowpocket -n '__fish_seen_subcommand_from list' -f -s 0 -d 'End each file with NUL'
complete -c stowpocket -n '__fish_seen_subcommand_from list' -x -l format -d 'What to print of each file: %p %n %u %i %s'
complete -c stowpocket -n '__fish_seen_subcommand_from list' -f -l json -d 'All that is known of each file'
complete -c stowpocket -n '__fish_seen_subcommand_from remove copy open' -f -a '(stowpocket list 2>/dev/null)'
complete -c stowpocket -n '__fish_seen_subcommand_from clear undo paste show toggle quick-drop' -f
