# Completion of kavo for bash: commands, their options, services and files. It asks kavo itself, so
# that it knows what the installed program knows.

_kavo() {
  local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]} choices
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    choices="$(kavo --help 2>/dev/null |
      awk '/^Subcommands:/ {on = 1; next} /^$/ {on = 0} on {print $1}') --help"
  elif [[ $word == -* ]]; then
    choices=$(kavo "$command" --help 2>/dev/null | grep -oE -- '--[a-z][a-z-]*')
  elif [ "$command" = help ]; then
    choices=$(kavo list 2>/dev/null | awk '{print $1}')
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
    return
  fi
  mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
}

complete -o filenames -F _kavo kavo
