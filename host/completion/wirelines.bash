# Completion of wirelines for bash. What it offers is what the program's own --help lists.

# Words that begin with $2 for a value, as --help names it: a choice "auto|always|never", or FILE.
_wirelines_value() {
  case $1 in
    *'|'*) mapfile -t COMPREPLY < <(compgen -W "${1//|/ }" -- "$2") ;;
    FILE)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$2")
      ;;
  esac
}

_wirelines() {
  local program=$1 word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  # --color=auto is three words.
  [[ $word == = ]] && word=
  [[ $before == = ]] && before=${COMP_WORDS[COMP_CWORD - 2]}
  COMPREPLY=()

  # The subcommands that are there already; the examples of --help stand behind a blank line.
  local help i
  local -a path=()
  for ((i = 1; ; i++)); do
    help=$("$program" "${path[@]}" --help 2>/dev/null) || return
    help=${help%%$'\n\n'*}
    ((i < COMP_CWORD)) && [[ ${COMP_WORDS[i]} =~ ^[a-z]+$ && $help == *$'\n  '"${COMP_WORDS[i]} "* ]] || break
    path+=("${COMP_WORDS[i]}")
  done

  local line name
  local -a options=(-h --help) arguments=() commands=()
  local -A value_of=()
  while IFS= read -r line; do
    [[ $line =~ ^'  '([^ ]+)(' '([^ ]+))?'  ' ]] || continue
    case ${BASH_REMATCH[1]} in
      -*)
        for name in ${BASH_REMATCH[1]//,/ }; do
          options+=("$name")
          value_of[$name]=${BASH_REMATCH[3]}
        done
        ;;
      [A-Z]*) arguments+=("${BASH_REMATCH[3]:-${BASH_REMATCH[1]}}") ;;
      *) commands+=("${BASH_REMATCH[1]}") ;;
    esac
  done <<<"$help"

  if [[ -n ${value_of[$before]} ]]; then
    _wirelines_value "${value_of[$before]}" "$word"
  elif [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "${options[*]}" -- "$word")
  elif ((${#commands[@]} > 0)); then
    mapfile -t COMPREPLY < <(compgen -W "${commands[*]}" -- "$word")
  else
    local at=0
    for (( ; i < COMP_CWORD; i++)); do
      if [[ ${COMP_WORDS[i]} != -?* ]]; then
        ((at++))
      elif [[ -n ${value_of[${COMP_WORDS[i]}]} ]]; then
        [[ ${COMP_WORDS[i + 1]} == = ]] && ((i++))
        ((i++))
      fi
    done
    ((at < ${#arguments[@]})) || at=$((${#arguments[@]} - 1))
    ((at < 0)) || _wirelines_value "${arguments[at]}" "$word"
  fi
}

complete -F _wirelines wirelines
