import java.util.*;

/** Times work and prints what it costs. */
final class Stopwatch {
    /** What is measured, in rounds. */
    interface Work {
        void run() throws Exception;
    }

    private static final Work NOTHING = () -> {};
    private static final double SHORT_ROUND = 0.005;
    private static final double BUDGET = Double.parseDouble(System.getenv().getOrDefault("BUDGET", "0.7"));
    private static final int LEAST_ROUNDS = 6;
    private static final int MOST_ROUNDS = 5000;

    private Stopwatch() {}

    static void measure(String name, double count, Work timed) throws Exception {
        measure(name, count, NOTHING, timed);
    }

    /** Prints the cost of the timed work for each of count in nanoseconds; what goes before a round is not timed. */
    static void measure(String name, double count, Work before, Work timed) throws Exception {
        report(name, seconds(before, timed) * 1e9 / count);
    }

    static void report(String name, double cost) {
        System.out.printf(Locale.ROOT, "%s %.6g%n", name, cost);
    }

    /**
     * Seconds of wall time of a round. The compiler of the virtual machine works during the earlier half of the rounds;
     * the median of the later half counts.
     */
    private static double seconds(Work before, Work timed) throws Exception {
        int times = before == NOTHING ? timesForRound(timed) : 1;
        List<Double> rounds = new ArrayList<>();
        double total = 0;
        long begin = System.nanoTime();
        while (rounds.size() < LEAST_ROUNDS
                || (rounds.size() < MOST_ROUNDS && total < BUDGET && secondsSince(begin) < 4 * BUDGET)) {
            before.run();
            double round = secondsOf(timed, times);
            total += round;
            rounds.add(round / times);
        }
        List<Double> later = new ArrayList<>(rounds.subList(rounds.size() / 2, rounds.size()));
        Collections.sort(later);
        return later.get(later.size() / 2);
    }

    /** How often short work is repeated for a round that is long enough; warms it by the way. */
    private static int timesForRound(Work timed) throws Exception {
        int times = 1;
        long begin = System.nanoTime();
        for (;;) {
            boolean isLong = secondsOf(timed, times) >= SHORT_ROUND;
            if (isLong && (times == 1 || secondsSince(begin) >= 0.3 * BUDGET)) {
                return times;
            }
            if (!isLong) {
                times *= 2;
            }
        }
    }

    private static double secondsOf(Work timed, int times) throws Exception {
        long begin = System.nanoTime();
        for (int i = 0; i < times; i++) {
            timed.run();
        }
        return secondsSince(begin);
    }

    private static double secondsSince(long begin) {
        return (System.nanoTime() - begin) / 1e9;
    }
}
