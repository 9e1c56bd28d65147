# Completes command lines of zovkpopup in fish.
set -l commands sig check explain publish new preview completion

complete -c zovkpopup -f
complete -c zovkpopup -l help -d "Shows what there is"
complete -c zovkpopup -n "not __fish_seen_subcommand_from $commands" -l version -d "Tells the version"

set -l known "not __fish_seen_subcommand_from $commands"
complete -c zovkpopup -n $known -a sig -d "What belongs into sig"
complete -c zovkpopup -n $known -a check -d "Checks a document and its pages"
complete -c zovkpopup -n $known -a explain -d "Tells why something is shown, or not"
complete -c zovkpopup -n $known -a publish -d "Puts a document live"
complete -c zovkpopup -n $known -a new -d "Writes a page to start from"
complete -c zovkpopup -n $known -a preview -d "Shows a page as a popup"
complete -c zovkpopup -n $known -a completion -d "Prints a script like this one"

complete -c zovkpopup -n "__fish_seen_subcommand_from sig check explain publish preview" -F
complete -c zovkpopup -n "__fish_seen_subcommand_from completion" -a "bash zsh fish"

complete -c zovkpopup -n "__fish_seen_subcommand_from sig check explain preview" -l json -d "JSON for scripts"
complete -c zovkpopup -n "__fish_seen_subcommand_from check explain publish" -l pages -x -a "(__fish_complete_directories)" -d "Where the page files lie"
complete -c zovkpopup -n "__fish_seen_subcommand_from check explain" -l as -x -a "remote service site local bundle" -d "Which document it is"
complete -c zovkpopup -n "__fish_seen_subcommand_from check explain" -l at -x -d "The time to judge at"
complete -c zovkpopup -n "__fish_seen_subcommand_from check publish" -l strict -d "Warnings count as errors"
complete -c zovkpopup -n "__fish_seen_subcommand_from check" -l fix -d "Puts digests and file names right"

complete -c zovkpopup -n "__fish_seen_subcommand_from explain" -l scene -x -d "A scene"
complete -c zovkpopup -n "__fish_seen_subcommand_from explain" -l scene-type -x -d "A scene type"
complete -c zovkpopup -n "__fish_seen_subcommand_from explain" -l channel -x -d "The player's login channel"

complete -c zovkpopup -n "__fish_seen_subcommand_from publish" -l to -x -a "(__fish_complete_directories) ssh: command:" -d "The site"
complete -c zovkpopup -n "__fish_seen_subcommand_from publish" -l base -x -d "The site's address"
complete -c zovkpopup -n "__fish_seen_subcommand_from publish" -l lasting -x -a "(__fish_complete_directories)" -d "Files under /pages/NAME"
complete -c zovkpopup -n "__fish_seen_subcommand_from publish" -l record -x -a "(__fish_complete_directories)" -d "What was published"
complete -c zovkpopup -n "__fish_seen_subcommand_from publish" -l rollback -d "Puts live again what was before"

complete -c zovkpopup -n "__fish_seen_subcommand_from new" -l folder -x -a "(__fish_complete_directories)" -d "Where to write"
complete -c zovkpopup -n "__fish_seen_subcommand_from new" -l template -x -a "announcement event reward survey policy" -d "Which page to start from"
complete -c zovkpopup -n "__fish_seen_subcommand_from new" -l force -d "Replaces files that are there"

complete -c zovkpopup -n "__fish_seen_subcommand_from preview" -l kind -x -a "ordinary game policy permission" -d "Which buttons come with the page"
complete -c zovkpopup -n "__fish_seen_subcommand_from preview" -l size -x -d "WIDTHxHEIGHT"
complete -c zovkpopup -n "__fish_seen_subcommand_from preview" -l theme -x -a "light dark high-contrast" -d "The desktop's theme"
complete -c zovkpopup -n "__fish_seen_subcommand_from preview" -l scale -x -a "1 2 3 4" -d "Pixels for each point"
complete -c zovkpopup -n "__fish_seen_subcommand_from preview" -l screenshot -r -F -d "Writes a PNG"
complete -c zovkpopup -n "__fish_seen_subcommand_from preview" -l matrix -r -F -d "Writes a sheet of pictures"
complete -c zovkpopup -n "__fish_seen_subcommand_from preview" -l watch -d "Loads the page when it is saved"
