# Completes command lines of zovkpopup in bash.
_zovkpopup_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "${COMP_WORDS[COMP_CWORD]}")
}

_zovkpopup_files() {
  compopt -o filenames 2> /dev/null
  mapfile -t COMPREPLY < <(compgen "$1" -- "${COMP_WORDS[COMP_CWORD]}")
}

_zovkpopup() {
  local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]} document
  COMPREPLY=()
  document="--pages --as --at --json --help"
  if [ "$COMP_CWORD" -eq 1 ]; then
    _zovkpopup_words "sig check explain publish new preview completion --version --help"
    return
  fi
  case ${COMP_WORDS[COMP_CWORD - 1]} in
    --as) _zovkpopup_words "remote service site local bundle"; return ;;
    --kind) _zovkpopup_words "ordinary game policy permission"; return ;;
    --template) _zovkpopup_words "announcement event reward survey policy"; return ;;
    --theme) _zovkpopup_words "light dark high-contrast"; return ;;
    --scale) _zovkpopup_words "1 2 3 4"; return ;;
    --pages | --folder | --lasting | --record) _zovkpopup_files -d; return ;;
    --screenshot | --matrix) _zovkpopup_files -f; return ;;
    --at | --to | --base | --scene | --scene-type | --channel | --size) return ;;
  esac
  case $word in
    -*)
      case $command in
        sig) _zovkpopup_words "--json --help" ;;
        check) _zovkpopup_words "$document --strict --fix" ;;
        explain) _zovkpopup_words "$document --scene --scene-type --channel" ;;
        publish) _zovkpopup_words "--to --pages --base --lasting --record --strict --rollback --help" ;;
        new) _zovkpopup_words "--folder --template --force --help" ;;
        preview) _zovkpopup_words "--kind --size --theme --scale --screenshot --matrix --watch --json --help" ;;
        *) _zovkpopup_words "--help" ;;
      esac
      return ;;
  esac
  case $command in
    completion) _zovkpopup_words "bash zsh fish" ;;
    sig | check | explain | publish | preview) _zovkpopup_files -f ;;
  esac
}

complete -F _zovkpopup zovkpopup
