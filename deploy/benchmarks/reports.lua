-- Reports that were signed beforehand: a line with the address, and one with the body. Every
-- player reports once.
local targets, bodies, number = {}, {}, 0

function init(arguments)
  local lines = io.lines(arguments[1])
  for target in lines do
    targets[#targets + 1] = target
    bodies[#bodies + 1] = lines()
  end
end

function request()
  number = number % #targets + 1
  return wrk.format("POST", targets[number], nil, bodies[number])
end
