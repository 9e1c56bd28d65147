# Completes command lines of zovkpopup-service in bash.
_zovkpopup_service() {
  local word=${COMP_WORDS[COMP_CWORD]}
  COMPREPLY=()
  case ${COMP_WORDS[COMP_CWORD - 1]} in
    --reports | --certificate-out)
      compopt -o filenames 2> /dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return ;;
    --port | --listen | --base | --game | --fault) return ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--port --listen --base --tls --certificate-out --reports \
      --game --fault --show-keys --verbose --version --help" -- "$word")
  else
    compopt -o filenames 2> /dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$word")
  fi
}

complete -F _zovkpopup_service zovkpopup-service
