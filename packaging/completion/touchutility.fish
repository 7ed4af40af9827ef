# fish completion for touchutility, touchctl and touchsim, each of which says itself what may come
# next.
function __touchutility_complete
    set -l before (commandline -opc)
    set -l current (commandline -ct)
    set -l answer ($before[1] --complete $before[2..] "$current" 2>/dev/null)
    # Of NAME=FILE only the file is a path.
    set -l name (string match --regex '^.*=' -- "$current")
    set -l path (string replace -- "$name" '' "$current")
    switch "$answer[1]"
        case files
            printf "$name%s\n" (__fish_complete_path "$path")
        case folders
            printf "$name%s\n" (__fish_complete_directories "$path")
        case words
            printf '%s\n' $answer[2..]
    end
end
for program in touchutility touchctl touchsim
    complete -c $program -f -a '(__touchutility_complete)'
end
